#include "lists/OpenInvoiceTotals.h"

#include "common/Clock.h"
#include "common/StatusLine.h"
#include "data/Databases.h"
#include "data/Money.h"
#include "lists/CurrentVendor.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace {
// A message shown for less than a frame is never seen.
constexpr qint64 frameMsecs = 16;
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
    const QString vendor = QString::number(number);
    m_openTotal = Money::fromSum(
        m_dbs.scalar(QStringLiteral("ap.mdb"),
                     QStringLiteral("select sum(invamount) from invoices where vendnumber = ") +
                         vendor + QStringLiteral(" and invstatus > 0 and invstatus < 4")));
    const long long year = m_clock.currentYear();
    m_yearTotal = Money::fromSum(m_dbs.scalar(
        QStringLiteral("ap.mdb"),
        QStringLiteral("select sum(invamount) from invoices where vendnumber = ") + vendor +
            QStringLiteral(" and invdate between ") + QString::number(year * 10000 + 100) +
            QStringLiteral(" and ") + QString::number(year * 10000 + 1232)));
    m_lastMsecs = took.elapsed();
    if (announce)
        m_status.show(previous);
    QCoreApplication::processEvents();
}
