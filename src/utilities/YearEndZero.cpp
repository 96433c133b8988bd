#include "utilities/YearEndZero.h"

#include "common/Dialogs.h"
#include "common/PassProgress.h"
#include "common/Session.h"
#include "common/StatusLine.h"
#include "data/Databases.h"
#include "data/RecordPass.h"

bool YearEndZero::run()
{
    m_s.session.lastYesNo = m_s.dialogs.yesNo(
        QStringLiteral("This function zeros the YTD totals for all vendors.\nClick YES to "
                       "continue and zero the totals; click\nNO to cancel. Note: This process "
                       "is irreversible."),
        QStringLiteral("EOY Zero"), Dialogs::No);
    if (m_s.session.lastYesNo == Dialogs::No)
        return false;
    m_s.status.show(QStringLiteral("Zeroing YTD totals..."));
    const QString ap = QStringLiteral("ap.mdb");
    const int total =
        m_s.databases.scalar(ap, QStringLiteral("select count(*) from vendors")).toInt();
    if (total < 1)
        return false; // the status line keeps its text
    PassScope pass(m_s.progress, total);
    RecordPass records(m_s.databases, ap);
    int done = 0;
    records.inBatches(
        QStringLiteral("vendors"), QStringLiteral("vendnumber"),
        QStringLiteral("update vendors set vendytd = 0 where vendnumber between ? and ?"),
        [](const RecordPass::Batch &) {},
        [&](const RecordPass::Batch &batch) { m_s.progress.advance(done += batch.count); });
    m_s.status.show(QStringLiteral("Vendor YTD totals zeroed."));
    return true;
}
