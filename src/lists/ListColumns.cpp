#include "lists/ListColumns.h"

namespace ListColumns {

const std::vector<ListColumn> &invoices()
{
    using K = ListColumn::Kind;
    static const std::vector<ListColumn> columns = {
        {QStringLiteral("Invoice #"), QStringLiteral("invnumber"), K::Text},
        {QStringLiteral("Date"), QStringLiteral("invdate"), K::Date},
        {QStringLiteral("Product"), QStringLiteral("invproduct"), K::Text},
        {QStringLiteral("Amount"), QStringLiteral("invamount"), K::Money},
        {QStringLiteral("Due"), QStringLiteral("invduedate"), K::Date},
        {QStringLiteral("Check #"), QStringLiteral("invchecknumber"), K::CheckNumber},
        {QStringLiteral("Check date"), QStringLiteral("invcheckdate"), K::Date},
        {QStringLiteral("Check amount"), QStringLiteral("invcheckamount"), K::Money},
        {QStringLiteral("G/L period"), QStringLiteral("invglperiod"), K::Whole},
        {QStringLiteral("Status"), QStringLiteral("invstatus"), K::Whole},
        {QStringLiteral("G/L account"), QStringLiteral("splitgl1"), K::Account},
    };
    return columns;
}

const std::vector<ListColumn> &checks()
{
    using K = ListColumn::Kind;
    // The table has seven columns; the last two are worked out from the check date so that a
    // bookkeeper sees the tax year a payment counts in and how long a check has been out.
    static const std::vector<ListColumn> columns = {
        {QStringLiteral("Check #"), QStringLiteral("chknum"), K::Whole},
        {QStringLiteral("Date"), QStringLiteral("chkdate"), K::Date},
        {QStringLiteral("Vendor #"), QStringLiteral("chkpayeenum"), K::Whole},
        {QStringLiteral("Payee"), QStringLiteral("chkpayeename"), K::Text},
        {QStringLiteral("Reference"), QStringLiteral("chkref"), K::Text},
        {QStringLiteral("Amount"), QStringLiteral("chkamount"), K::Money},
        {QStringLiteral("Status"), QStringLiteral("chkstatus"), K::Whole},
        {QStringLiteral("Tax year"), QStringLiteral("chkdate"), K::Year},
        {QStringLiteral("Age (days)"), QStringLiteral("chkdate"), K::AgeInDays},
    };
    return columns;
}

} // namespace ListColumns
