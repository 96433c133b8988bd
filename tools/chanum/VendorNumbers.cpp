#include "VendorNumbers.h"

#include "data/Databases.h"
#include "data/Money.h"
#include "utilities/BalanceRecalculation.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace {

const QString ap = QStringLiteral("ap.mdb");
constexpr int userFields = 30; // miscvalue1 .. miscvalue30, described by miscdesc1 .. 30

QString num(qlonglong n)
{
    return QString::number(n);
}

} // namespace

const std::vector<VendorNumbers::Reference> &VendorNumbers::references()
{
    static const std::vector<Reference> tables{{"invoices", "vendnumber"},
                                               {"checks", "chkpayeenum"},
                                               {"vendnotes", "vendnumber"},
                                               {"miscdata", "acctid"}};
    return tables;
}

void VendorNumbers::exec(const QString &statement, const QVariantList &values)
{
    QSqlQuery q(m_dbs.open(ap));
    bool done = q.prepare(statement);
    if (done) {
        for (const QVariant &v : values)
            q.addBindValue(v);
        done = q.exec();
    }
    if (!done)
        throw Databases::errorFrom(q.lastError(), statement);
}

VendorFigures VendorNumbers::figures(qlonglong number)
{
    VendorFigures f;
    f.number = number;
    const QString n = num(number);
    QSqlQuery vendor = m_dbs.select(
        ap, QStringLiteral("select vendname, vendbalcurrent, vendytd, vendbal60, vendbal90 from "
                           "vendors where vendnumber = ") +
                n);
    if (vendor.next()) {
        f.exists = true;
        f.name = vendor.value(0).toString().trimmed();
        f.balance = Money::fromSum(vendor.value(1));
        f.ytd = Money::fromSum(vendor.value(2));
        f.balance60 = Money::fromSum(vendor.value(3));
        f.balance90 = Money::fromSum(vendor.value(4));
    }
    vendor.finish();
    QSqlQuery inv = m_dbs.select(ap, QStringLiteral("select count(*), sum(invamount), "
                                                    "sum(invcheckamount) from invoices where "
                                                    "vendnumber = ") +
                                         n);
    if (inv.next()) {
        f.invoices = inv.value(0).toInt();
        f.invoiceTotal = Money::fromSum(inv.value(1));
        f.invoicePaidTotal = Money::fromSum(inv.value(2));
    }
    inv.finish();
    QSqlQuery chk = m_dbs.select(
        ap, QStringLiteral("select count(*), sum(chkamount) from checks where chkpayeenum = ") + n);
    if (chk.next()) {
        f.checks = chk.value(0).toInt();
        f.checkTotal = Money::fromSum(chk.value(1));
    }
    chk.finish();
    f.notes =
        m_dbs.scalar(ap, QStringLiteral("select count(*) from vendnotes where vendnumber = ") + n)
            .toInt();
    f.userValues =
        m_dbs.scalar(ap, QStringLiteral("select count(*) from miscdata where acctid = ") + n)
            .toInt();
    return f;
}

void VendorNumbers::lock(qlonglong number)
{
    const QString sql =
        m_dbs.dialect().lockRow(QStringLiteral("vendors"), QStringLiteral("vendnumber"));
    if (!sql.isEmpty())
        exec(sql, {number});
}

void VendorNumbers::change(qlonglong from, qlonglong to)
{
    exec(QStringLiteral("update vendors set vendnumber = ? where vendnumber = ?"), {to, from});
    for (const Reference &r : references())
        exec(QStringLiteral("update %1 set %2 = ? where %2 = ?")
                 .arg(QLatin1String(r.table), QLatin1String(r.column)),
             {to, from});
}

QString VendorNumbers::notesSeparator(qlonglong from, const QString &name, const QDate &today)
{
    return QStringLiteral("---- %1: notes of vendor %2 (%3), merged into this vendor ----")
        .arg(today.toString(Qt::ISODate), num(from), name);
}

void VendorNumbers::moveNotes(qlonglong from, qlonglong into, const QString &fromName,
                              const QDate &today)
{
    QStringList fromNotes;
    {
        QSqlQuery q = m_dbs.select(
            ap, QStringLiteral("select notes from vendnotes where vendnumber = ") + num(from));
        while (q.next())
            if (!q.value(0).toString().trimmed().isEmpty())
                fromNotes << q.value(0).toString();
    }
    exec(QStringLiteral("delete from vendnotes where vendnumber = ?"), {from});
    if (fromNotes.isEmpty())
        return;
    const QString eol = QStringLiteral("\r\n");
    const QString appended = notesSeparator(from, fromName, today) + eol + fromNotes.join(eol);
    QVariant intoNotes;
    {
        QSqlQuery q = m_dbs.select(
            ap, QStringLiteral("select notes from vendnotes where vendnumber = ") + num(into));
        if (q.next())
            intoNotes = q.value(0);
    }
    if (!intoNotes.isValid()) {
        exec(QStringLiteral("insert into vendnotes (vendnumber, notes) values (?, ?)"),
             {into, appended});
        return;
    }
    QString text = intoNotes.toString();
    if (!text.isEmpty() && !text.endsWith(eol))
        text += eol;
    // Only the first notes row of a vendor is shown and saved, so the merged notes go there.
    exec(QStringLiteral("update vendnotes set notes = ? where vendnumber = ? and notes %1")
             .arg(intoNotes.isNull() ? QStringLiteral("is null") : QStringLiteral("= ?")),
         intoNotes.isNull() ? QVariantList{text + appended, into}
                            : QVariantList{text + appended, into, intoNotes});
}

QStringList VendorNumbers::moveUserValues(qlonglong from, qlonglong into)
{
    QSqlRecord fromRow, intoRow;
    {
        QSqlQuery q =
            m_dbs.select(ap, QStringLiteral("select * from miscdata where acctid = ") + num(from));
        if (q.next())
            fromRow = q.record();
    }
    {
        QSqlQuery q =
            m_dbs.select(ap, QStringLiteral("select * from miscdata where acctid = ") + num(into));
        if (q.next())
            intoRow = q.record();
    }
    if (fromRow.isEmpty())
        return {};
    if (intoRow.isEmpty()) {
        exec(QStringLiteral("update miscdata set acctid = ? where acctid = ?"), {into, from});
        return {};
    }
    QSqlRecord descriptions;
    {
        QSqlQuery q = m_dbs.select(ap, QStringLiteral("select * from miscinfo"));
        if (q.next())
            descriptions = q.record();
    }
    QStringList conflicts, sets;
    QVariantList values;
    for (int i = 1; i <= userFields; ++i) {
        const QString column = QStringLiteral("miscvalue") + num(i);
        const QString mine = intoRow.value(column).toString();
        const QString theirs = fromRow.value(column).toString();
        if (theirs.trimmed().isEmpty() || mine == theirs)
            continue;
        if (mine.trimmed().isEmpty()) {
            sets << column + QStringLiteral(" = ?");
            values << theirs;
            continue;
        }
        QString field =
            descriptions.value(QStringLiteral("miscdesc") + num(i)).toString().trimmed();
        if (field.isEmpty())
            field = QStringLiteral("Field %1").arg(i);
        conflicts << QStringLiteral("%1: kept \"%2\" of vendor %3, not \"%4\" of vendor %5")
                         .arg(field, mine, num(into), theirs, num(from));
    }
    if (!sets.isEmpty()) {
        values << into;
        exec(QStringLiteral("update miscdata set %1 where acctid = ?").arg(sets.join(", ")),
             values);
    }
    exec(QStringLiteral("delete from miscdata where acctid = ?"), {from});
    return conflicts;
}

VendorNumbers::MergeResult VendorNumbers::merge(qlonglong from, qlonglong into, const QDate &today,
                                                int year)
{
    const VendorFigures was = figures(from);
    MergeResult result;
    exec(QStringLiteral("update invoices set vendnumber = ? where vendnumber = ?"), {into, from});
    exec(QStringLiteral("update checks set chkpayeenum = ? where chkpayeenum = ?"), {into, from});
    moveNotes(from, into, was.name, today);
    result.conflicts = moveUserValues(from, into);
    // The aged balances are not rebuilt from invoices anywhere; the merged vendor's are added.
    exec(QStringLiteral("update vendors set vendbal60 = round(coalesce(vendbal60, 0) + ?, 4), "
                        "vendbal90 = round(coalesce(vendbal90, 0) + ?, 4) where vendnumber = ?"),
         {was.balance60, was.balance90, into});
    exec(BalanceRecalculation::totalsStatement(year * 10000L + 101, year * 10000L + 1231),
         {into, into, into});
    exec(QStringLiteral("delete from vendors where vendnumber = ?"), {from});
    return result;
}
