#include "lists/ListQueries.h"

#include <array>

namespace ListQueries {
namespace {
QString invoicesOf(long long vendor)
{
    return QStringLiteral("select * from invoices where vendnumber = ") + QString::number(vendor);
}
} // namespace

QString unpaid(long long vendor, bool oldToNew)
{
    return invoicesOf(vendor) +
           QStringLiteral(" and invstatus > 0 and invstatus <= 3 order by invdate") +
           (oldToNew ? QString() : QStringLiteral(" desc"));
}

QString paid(long long vendor, bool oldToNew)
{
    return invoicesOf(vendor) + QStringLiteral(" and invchecknumber > 0 order by invdate") +
           (oldToNew ? QString() : QStringLiteral(" desc"));
}

QString checks(long long vendor, bool oldToNew)
{
    const QString base =
        QStringLiteral("select * from checks where chkpayeenum = ") + QString::number(vendor);
    return oldToNew ? base : base + QStringLiteral(" order by chkdate desc");
}

std::optional<QString> invoiceResort(const QString &vendor, const QString &caption, int column)
{
    static const std::array<const char *, 9> clauses = {
        " order by invnumber, invdate",   " order by invdate",
        " order by invproduct",           " order by invamount",
        " order by invduedate",           " order by invchecknumber",
        " order by invcheckdate",         " order by invcheckamount",
        " order by invglperiod, invdate",
    };
    const bool unpaidList = caption == QLatin1String("Unpaid Invoices");
    if (unpaidList && column >= 5 && column <= 7)
        return std::nullopt;
    // The paid list is re-sorted by status, whereas it was listed by check number.
    const QString filter = caption == QLatin1String("Paid Invoices")
                               ? QStringLiteral(" and invstatus > 0 and invstatus > 3")
                               : QStringLiteral(" and invstatus > 0 and invstatus < 4");
    QString sql = QStringLiteral("select * from invoices where vendnumber = ") + vendor + filter;
    if (column >= 0 && column < static_cast<int>(clauses.size()))
        sql += QLatin1String(clauses[static_cast<size_t>(column)]);
    return sql;
}

QString checkResort(const QString &vendor, int column)
{
    static const std::array<const char *, 7> clauses = {
        " order by chknum",       " order by chkdate", " order by chkpayeenum",
        " order by chkpayeename", " order by chkref",  " order by chkamount",
        " order by chkstatus",
    };
    QString sql = QStringLiteral("select * from checks where chkpayeenum = ") + vendor;
    if (column >= 0 && column < static_cast<int>(clauses.size()))
        sql += QLatin1String(clauses[static_cast<size_t>(column)]);
    return sql;
}

QString invoiceCriterion(const QString &invoice, const QString &date, const QString &check)
{
    QString number = invoice;
    number.replace(QLatin1Char('\''), QStringLiteral("''"));
    if (date.isEmpty())
        return QStringLiteral("invnumber = '") + number + QStringLiteral("' and invdate = '") +
               date + QStringLiteral("' and invchecknumber = ") + check;
    return QStringLiteral("invnumber = '") + number + QStringLiteral("' and invdate = ") + date +
           QStringLiteral(" and invchecknumber = ") + check;
}

} // namespace ListQueries
