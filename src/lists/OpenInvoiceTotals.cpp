#include "lists/OpenInvoiceTotals.h"

#include "common/Services.h"
#include "common/Clock.h"
#include "common/Numbers.h"
#include "data/Databases.h"
#include "data/Money.h"
#include "vendorscreen/VendorWindow.h"

#include <QCoreApplication>
#include <QLineEdit>

void OpenInvoiceTotals::compute()
{
    const QString previous = m_window.status();
    m_window.setStatus(QStringLiteral("Retrieving open invoices... one moment please..."));
    const long long number = Numbers::leadingWhole(m_window.controls().Text1[0]->text());
    if (number < 1)
        return;
    Databases &dbs = m_window.services().databases;
    const QString vendor = QString::number(number);
    ScreenState &state = m_window.state();
    state.openTotal = Money::fromSum(
        dbs.scalar(QStringLiteral("ap.mdb"),
                   QStringLiteral("select sum(invamount) from invoices where vendnumber = ") +
                       vendor + QStringLiteral(" and invstatus > 0 and invstatus < 4")));
    const long long year = m_window.services().clock.currentYear();
    state.yearTotal = Money::fromSum(dbs.scalar(
        QStringLiteral("ap.mdb"),
        QStringLiteral("select sum(invamount) from invoices where vendnumber = ") + vendor +
            QStringLiteral(" and invdate between ") + QString::number(year * 10000 + 100) +
            QStringLiteral(" and ") + QString::number(year * 10000 + 1232)));
    m_window.setStatus(previous);
    QCoreApplication::processEvents();
}
