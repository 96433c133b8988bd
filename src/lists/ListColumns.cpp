#include "lists/ListColumns.h"

namespace ListColumns {

const std::vector<ListColumn> &invoices()
{
    using K = ListColumn::Kind;
    static const std::vector<ListColumn> columns = {
        {QStringLiteral("Invoice #"), QStringLiteral("invnumber"), K::Text, 90},
        {QStringLiteral("Date"), QStringLiteral("invdate"), K::Date, 75},
        {QStringLiteral("Product"), QStringLiteral("invproduct"), K::Text, 135},
        {QStringLiteral("Amount"), QStringLiteral("invamount"), K::Money, 90},
        {QStringLiteral("Due"), QStringLiteral("invduedate"), K::Date, 75},
        {QStringLiteral("Check #"), QStringLiteral("invchecknumber"), K::CheckNumber, 65},
        {QStringLiteral("Check date"), QStringLiteral("invcheckdate"), K::Date, 80},
        {QStringLiteral("Check amount"), QStringLiteral("invcheckamount"), K::Money, 95},
        {QStringLiteral("G/L period"), QStringLiteral("invglperiod"), K::Whole, 70},
        {QStringLiteral("Status"), QStringLiteral("invstatus"), K::InvoiceStatus, 65},
        {QStringLiteral("G/L account"), QStringLiteral("splitgl1"), K::Account, 80},
    };
    return columns;
}

const std::vector<ListColumn> &checks()
{
    using K = ListColumn::Kind;
    // The table has seven columns; the last two are worked out from the check date so that a
    // bookkeeper sees the tax year a payment counts in and how long a check has been out.
    static const std::vector<ListColumn> columns = {
        {QStringLiteral("Check #"), QStringLiteral("chknum"), K::Whole, 70},
        {QStringLiteral("Date"), QStringLiteral("chkdate"), K::Date, 80},
        {QStringLiteral("Vendor #"), QStringLiteral("chkpayeenum"), K::Whole, 70},
        {QStringLiteral("Payee"), QStringLiteral("chkpayeename"), K::Text, 220},
        {QStringLiteral("Reference"), QStringLiteral("chkref"), K::Text, 160},
        {QStringLiteral("Amount"), QStringLiteral("chkamount"), K::Money, 100},
        {QStringLiteral("Status"), QStringLiteral("chkstatus"), K::Whole, 60},
        {QStringLiteral("Tax year"), QStringLiteral("chkdate"), K::Year, 70},
        {QStringLiteral("Age (days)"), QStringLiteral("chkdate"), K::AgeInDays, 80},
    };
    return columns;
}

} // namespace ListColumns
