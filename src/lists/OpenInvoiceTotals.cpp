#include "lists/OpenInvoiceTotals.h"

#include "common/Clock.h"
#include "common/StatusLine.h"
#include "data/Databases.h"
#include "data/Money.h"
#include "lists/CurrentVendor.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlError>
#include <QSqlQuery>

namespace {
// A message shown for less than a frame is never seen.
constexpr qint64 frameMsecs = 16;

// The open-invoice total and the invoiced total of a range of dates, prepared once and kept.
const QString sumsStatement = QStringLiteral(
    "select (select sum(invamount) from invoices where vendnumber = ? and invstatus > 0 and "
    "invstatus < 4), (select sum(invamount) from invoices where vendnumber = ? and invdate "
    "between ? and ?)");
} // namespace

void OpenInvoiceTotals::compute()
{
    const QString previous = m_status.text();
    const QString message = QStringLiteral("Retrieving open invoices... one moment please...");
    // The message is painted at once where the user can read it: where the computation before
    // kept the screen waiting longer than a frame. Otherwise the status line is left alone
    // while the sums run, so that it is not painted at all for a message nobody could read.
    const bool announce = m_lastMsecs > frameMsecs;
    const long long number = m_vendor.number();
    if (number < 1) {
        m_status.show(message); // stays: there is nothing to wait for
        return;
    }
    if (announce)
        m_status.show(message);
    QElapsedTimer took;
    took.start();
    const long long year = m_clock.currentYear();
    // Both sums in one statement (one round trip to a server), each read by its own index. A
    // connection the server ended is replaced once, as for any read.
    for (int attempt = 1;; ++attempt) {
        QSqlQuery &sums = m_dbs.prepared(QStringLiteral("ap.mdb"), sumsStatement);
        sums.bindValue(0, number);
        sums.bindValue(1, number);
        sums.bindValue(2, year * 10000 + 100);
        sums.bindValue(3, year * 10000 + 1232);
        if (!sums.exec()) {
            const QSqlError error = sums.lastError();
            if (attempt > 1 || !m_dbs.renewIfGone(QStringLiteral("ap.mdb")))
                throw Databases::errorFrom(error, sumsStatement);
            continue;
        }
        const bool found = sums.next();
        m_openTotal = Money::fromSum(found ? sums.value(0) : QVariant());
        m_yearTotal = Money::fromSum(found ? sums.value(1) : QVariant());
        sums.finish(); // the kept statement holds nothing open until its next use
        break;
    }
    m_lastMsecs = took.elapsed();
    if (announce)
        m_status.show(previous);
    QCoreApplication::processEvents();
}
