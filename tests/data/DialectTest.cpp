#include "data/SqliteDialect.h"
#include "data/Databases.h"
#include "support/DataFolder.h"

#include <QSqlQuery>
#include <QSqlRecord>

#include <gtest/gtest.h>

TEST(SqliteDialect, UcaseBecomesUpperOutsideQuotedText)
{
    SqliteDialect d;
    EXPECT_EQ(d.map("select sysuser from staff where ucase$(username) = 'ANNE'"),
              "select sysuser from staff where upper(username) = 'ANNE'");
    EXPECT_EQ(d.map("select * from vendors where vendname >= 'ucase$(x)'"),
              "select * from vendors where vendname >= 'ucase$(x)'");
    EXPECT_EQ(d.map("UCASE$(a)"), "upper(a)");
}

TEST(SqliteDialect, StatementsTheEngineAcceptsAreLeftAsTheyAre)
{
    SqliteDialect d;
    const QString sql = "select * from vendors where vendnumber >=250 order by vendnumber";
    EXPECT_EQ(d.map(sql), sql);
}

TEST(SqliteDialect, BothTwiceNamedJoinsBecomeTheSameInnerJoin)
{
    SqliteDialect d;
    const QString a =
        d.map("select * from invoices, vendors, vendors inner join invoices "
              "on invoices.vendnumber = vendors.vendnumber where invoices.invnumber = 'A1'");
    const QString b =
        d.map("select * from invoices, vendors, invoices inner join vendors "
              "on invoices.vendnumber = vendors.vendnumber where invoices.invnumber = 'A1'");
    EXPECT_EQ(a, b);
    EXPECT_EQ(a, "select vendors.*, invoices.* from invoices inner join vendors on "
                 "invoices.vendnumber = vendors.vendnumber where invoices.invnumber = 'A1'");
}

TEST(SqliteDialect, JoinedLookupGivesEachInvoiceWithItsVendorVendorNumberFirst)
{
    DataFolder folder;
    folder.addVendor(7, "Seven");
    folder.addVendor(9, "Nine");
    folder.exec("ap.mdb", "insert into invoices (vendnumber, invnumber, invproduct) values "
                          "(9, 'A1', 'Paper'), (7, 'A1', 'Toner'), (7, 'B2', 'Chairs')");
    Databases dbs;
    for (const char *join : {"vendors inner join invoices", "invoices inner join vendors"}) {
        QSqlQuery q = dbs.select(
            "ap.mdb", QStringLiteral("select * from invoices, vendors, %1 on invoices.vendnumber "
                                     "= vendors.vendnumber where invoices.invproduct >= 'Paper' "
                                     "order by invproduct")
                          .arg(QString::fromLatin1(join)));
        QStringList rows;
        while (q.next())
            rows << q.value(0).toString() + ":" + q.record().value("vendname").toString() + ":" +
                        q.record().value("invproduct").toString();
        EXPECT_EQ(rows.join(','), "9:Nine:Paper,7:Seven:Toner") << join;
    }
}
