#include "lists/OpenInvoiceTotals.h"

#include "common/Clock.h"
#include "common/StatusLine.h"
#include "data/Databases.h"
#include "data/Money.h"
#include "lists/CurrentVendor.h"

#include <QCoreApplication>

void OpenInvoiceTotals::compute()
{
    const QString previous = m_status.text();
    m_status.show(QStringLiteral("Retrieving open invoices... one moment please..."));
    const long long number = m_vendor.number();
    if (number < 1)
        return;
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
    m_status.show(previous);
    QCoreApplication::processEvents();
}
