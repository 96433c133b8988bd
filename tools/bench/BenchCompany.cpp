#include "BenchCompany.h"

#include "data/Databases.h"
#include "data/DbError.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace BenchCompany {
namespace {
void run(Databases &dbs, const QString &file, const QStringList &statements)
{
    QSqlDatabase db = dbs.open(file);
    WriteTransaction tx(dbs, file);
    for (const QString &sql : statements) {
        QSqlQuery q(db);
        if (!q.exec(sql))
            throw Databases::errorFrom(q.lastError(), sql);
    }
    tx.commit();
}

// Rows 1..count of a numbers table, for statements that make many rows at once.
QString upTo(long long count)
{
    return QStringLiteral("with recursive n(i) as (select 1 union all select i + 1 from n "
                          "where i < %1) ")
        .arg(count);
}
} // namespace

void make(int bigVendorInvoices)
{
    for (const char *name : {"ap.mdb", "gl.mdb", "config.mdb", "user.mdb"})
        if (!QFile::exists(QString::fromLatin1(name)))
            Databases::create(QString::fromLatin1(name));
    Databases dbs;
    run(dbs, QStringLiteral("config.mdb"),
        {QStringLiteral("delete from ap"),
         QStringLiteral("insert into ap (apaccess0, apaccess1, apaccess2, apaccess3, pnetyesno) "
                        "values (0, 0, 0, 0, 'N')")});
    run(dbs, QStringLiteral("user.mdb"),
        {QStringLiteral("delete from staff where username = 'BENCH'"),
         QStringLiteral("insert into staff (username, location, work, sysuser, localdrive, "
                        "aplevel) values ('BENCH', 'Main menu', '', 1, '', 99)")});
    run(dbs, QStringLiteral("gl.mdb"),
        {QStringLiteral("delete from gl0"),
         QStringLiteral("insert into gl0 (glacctnum, glacctname, glaccttype, gllevel) values "
                        "(1000, 'Cash', 1, 0), (5000, 'Office supplies', 5, 0), "
                        "(5100, 'Hall rental', 5, 0), (5200, 'Printing', 5, 0)")});
    run(dbs, QStringLiteral("ap.mdb"),
        {QStringLiteral("delete from vendors"), QStringLiteral("delete from invoices"),
         QStringLiteral("delete from checks"),
         upTo(1000) + QStringLiteral("insert into vendors (vendnumber, vendname, vend1099type, "
                                     "vendglacct, vendytd, vendbalcurrent, vendbal60, vendbal90) "
                                     "select i, 'Vendor ' || i, 0, 5000, 0, 0, 0, 0 from n"),
         upTo(10000) +
             QStringLiteral(
                 "insert into invoices (vendnumber, invnumber, invdate, invduedate, invproduct, "
                 "invamount, invstatus, invchecknumber, invglperiod, splitgl1, splitamt1) "
                 "select 2 + i % 999, 'S' || i, 20250101 + i % 28, 20250131, 'Supplies', i % 500, "
                 "1 + i % 5, 0, 1, 5000, i % 500 from n"),
         upTo(bigVendorInvoices) +
             QStringLiteral(
                 "insert into invoices (vendnumber, invnumber, invdate, invduedate, invproduct, "
                 "invamount, invstatus, invchecknumber, invcheckdate, invcheckamount, invglperiod, "
                 "splitgl1, splitamt1, splitgl2, splitamt2, splitgl3, splitamt3) "
                 "select 1, 'B' || i, "
                 "(2015 + i / 2000) * 10000 + (1 + (i / 28) % 12) * 100 + 1 + i % 28, "
                 "20250131, 'Item ' || (i % 97), (i * 7919) % 100000 / 100.0, 1 + i % 6, "
                 "case when i % 6 >= 3 then 10000 + i else 0 end, "
                 "case when i % 6 >= 3 then 20250215 else 0 end, "
                 "case when i % 6 >= 3 then (i * 7919) % 100000 / 100.0 else 0 end, "
                 "1 + i % 12, 5000, 10, 5100, 20, 5200, 30 from n"),
         upTo(500) +
             QStringLiteral(
                 "insert into checks (chkpayeenum, chkpayeename, chknum, chkdate, chkamount, "
                 "chkref, "
                 "chkstatus) select 1, 'Vendor 1', 10000 + i, 20150101 + i % 28, i, 'Ref ' || i, 1 "
                 "from n")});
    dbs.closeAll();
}

} // namespace BenchCompany
