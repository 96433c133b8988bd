#include "utilities/BalanceRecalculation.h"

#include "common/Dialogs.h"
#include "common/Numbers.h"
#include "common/PassProgress.h"
#include "common/Prompts.h"
#include "common/Session.h"
#include "common/StatusLine.h"
#include "data/Databases.h"
#include "data/RecordPass.h"

namespace {

// Each vendor's two totals over the range, summed and rounded to four decimals (0 without an
// invoice): the balance from the invoice amounts dated in it, the YTD total from the check
// amounts paid in it.
QList<RecordPass::Assignment> totalsOverRange(long from, long to)
{
    const QString range = QStringLiteral(" between ") + QString::number(from) +
                          QStringLiteral(" and ") + QString::number(to);
    const auto sum = [&](const QString &amount, const QString &date) {
        return QStringLiteral("round(coalesce((select sum(i.") + amount +
               QStringLiteral(") from invoices i where i.vendnumber = vendors.vendnumber and i.") +
               date + range + QStringLiteral("), 0), 4)");
    };
    return {{QStringLiteral("vendbalcurrent"),
             sum(QStringLiteral("invamount"), QStringLiteral("invdate"))},
            {QStringLiteral("vendytd"),
             sum(QStringLiteral("invcheckamount"), QStringLiteral("invcheckdate"))}};
}

} // namespace

QString BalanceRecalculation::question(long from, long to)
{
    return QStringLiteral("Recalculate the balances of every vendor from %1 to %2?")
        .arg(from)
        .arg(to);
}

bool BalanceRecalculation::run()
{
    m_s.session.messageText = QStringLiteral("Invoices");
    Prompts::askDateRange(m_s.dialogs, m_s.clock, m_s.session);
    const QString answer = m_s.session.messageText;
    // A cancelled prompt reads as 0 and ends the run without a word, as any date before 1999 does.
    const long from = static_cast<long>(Numbers::leadingWhole(answer.left(8)));
    const long to = static_cast<long>(Numbers::leadingWhole(answer.right(8)));
    if (from < firstDate || to < firstDate)
        return false;
    // Whatever the totals held is discarded: one question before anything is written.
    if (m_s.dialogs.yesNo(question(from, to), QStringLiteral("Recalculate Balances"),
                          Dialogs::No) != Dialogs::Yes)
        return false;
    recalculate(from, to);
    return true;
}

void BalanceRecalculation::recalculate(long from, long to)
{
    const QString ap = QStringLiteral("ap.mdb");
    const int vendors =
        m_s.databases.scalar(ap, QStringLiteral("select count(*) from vendors")).toInt();
    if (vendors > 0) {
        PassScope pass(m_s.progress, 2 * vendors);
        RecordPass records(m_s.databases, ap);
        int done = 0;
        const auto advance = [&](const RecordPass::Batch &batch) {
            m_s.progress.advance(done += batch.count);
        };
        // First pass: whatever the totals held is discarded.
        records.inBatches(
            QStringLiteral("vendors"), QStringLiteral("vendnumber"),
            QStringLiteral("update vendors set vendbalcurrent = 0, vendytd = 0 "
                           "where vendnumber between ? and ?"),
            [](const RecordPass::Batch &) {}, advance);
        // Second pass: each vendor's totals from its invoices in the range, a batch of vendors in
        // one transaction. The first vendor of the batch being written is the one the status
        // line shows.
        records.inBatches(
            QStringLiteral("vendors"), QStringLiteral("vendnumber"), totalsOverRange(from, to),
            [&](const RecordPass::Batch &batch) {
                m_s.status.set(QStringLiteral("Recalculating vendor # ") +
                               QString::number(batch.first));
            },
            advance);
    }
    m_s.status.show(QStringLiteral("Vendor balances recalculated between ") +
                    QString::number(from) + QStringLiteral(" and ") + QString::number(to));
}

QString BalanceRecalculation::totalsStatement(long from, long to)
{
    // Both ends of the range are included.
    const QString range = QStringLiteral(" between ") + QString::number(from) +
                          QStringLiteral(" and ") + QString::number(to);
    return QStringLiteral("update vendors set vendbalcurrent = round(coalesce((select "
                          "sum(invamount) from invoices where vendnumber = ? and invdate") +
           range +
           QStringLiteral("), 0), 4), vendytd = round(coalesce((select sum(invcheckamount) from "
                          "invoices where vendnumber = ? and invcheckdate") +
           range + QStringLiteral("), 0), 4) where vendnumber = ?");
}
