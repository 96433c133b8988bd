// The import of the real Access sample files: a Jet 3 file (nwind.mdb) and a Jet 4 file
// (DateTestDatabase.mdb). Every table, column and row; their values as the files hold them.
#include "ImportFixture.h"

#include "support/SharedTestData.h"

#include <QCryptographicHash>
#include <QFile>

#include <gtest/gtest.h>

namespace {
QString sample(const char *name)
{
    return SharedTestData::find(QStringLiteral("access/") + QLatin1String(name));
}

QByteArray digest(const QString &path)
{
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

// Imports one sample as the only file of the source folder.
class AccessFiles : public ::testing::Test {
protected:
    void importSample(const char *name)
    {
        const QString path = sample(name);
        FAIL_WITHOUT_SHARED_FILE(path, QStringLiteral("access/") + QLatin1String(name));
        fixture.copyIntoSource(path, QLatin1String(name));
        ASSERT_EQ(fixture.run(), QString());
    }
    QVariant nwind(const QString &statement) { return fixture.scalar("nwind.mdb", statement); }
    QVariant dates(const QString &statement)
    {
        return fixture.scalar("DateTestDatabase.mdb", statement);
    }
    ImportFixture fixture;
};
} // namespace

TEST_F(AccessFiles, JetThreeFileKeepsEveryTableWithItsRows)
{
    importSample("nwind.mdb");
    const QVariantList tables = fixture.column(
        "nwind.mdb", "select name from sqlite_master where type = 'table' and name not in "
                     "('schema_version') order by name");
    QStringList names;
    for (const QVariant &t : tables)
        names << t.toString();
    EXPECT_EQ(names.join(","), QStringLiteral("Categories,Customers,Employees,Order Details,"
                                              "Orders,Products,Shippers,Suppliers,Umsätze"));
    EXPECT_EQ(nwind("select count(*) from \"Order Details\"").toInt(), 2155);
    EXPECT_EQ(nwind("select count(*) from Orders").toInt(), 830);
    EXPECT_EQ(nwind("select count(*) from Products").toInt(), 77);
    EXPECT_EQ(nwind("select count(*) from Shippers").toInt(), 3);
    EXPECT_EQ(nwind("select count(*) from Categories").toInt(), 8);
    EXPECT_EQ(nwind("select count(*) from Customers").toInt(), 91);
    EXPECT_EQ(nwind("select count(*) from Employees").toInt(), 9);
    EXPECT_EQ(nwind("select count(*) from Suppliers").toInt(), 29);
}

TEST_F(AccessFiles, ANonAsciiTableNameDecodes)
{
    importSample("nwind.mdb");
    EXPECT_EQ(nwind("select count(*) from \"Umsätze\"").toInt(), 830);
    EXPECT_EQ(nwind("select ShipAddress from Orders where OrderID = 10330").toString(),
              QStringLiteral("Carrera 52 con Ave. Bolívar #65-98 Llano Largo"));
}

TEST_F(AccessFiles, ColumnNamesAndTypesAreKept)
{
    importSample("nwind.mdb");
    const QVariantList columns =
        fixture.column("nwind.mdb", "select name || ' ' || type from pragma_table_info('Orders')");
    QStringList shown;
    for (const QVariant &c : columns)
        shown << c.toString();
    EXPECT_EQ(shown.join(","),
              QStringLiteral("OrderID INTEGER,CustomerID TEXT,EmployeeID INTEGER,"
                             "OrderDate DATETIME,RequiredDate DATETIME,ShippedDate DATETIME,"
                             "ShipVia INTEGER,Freight CURRENCY,ShipName TEXT,ShipAddress TEXT,"
                             "ShipCity TEXT,ShipRegion TEXT,ShipPostalCode TEXT,"
                             "ShipCountry TEXT"));
    EXPECT_EQ(nwind("select type from pragma_table_info('Order Details') where name = "
                    "'Discount'")
                  .toString(),
              QStringLiteral("DOUBLE"));
    EXPECT_EQ(
        nwind("select type from pragma_table_info('Employees') where name = 'Photo'").toString(),
        QStringLiteral("BLOB"));
}

TEST_F(AccessFiles, CurrencyIsExactToFourDecimals)
{
    importSample("nwind.mdb");
    EXPECT_EQ(nwind("select UnitPrice from Products where ProductID = 1").toDouble(), 18.0);
    EXPECT_EQ(nwind("select printf('%.4f', sum(UnitPrice)) from Products").toString(),
              QStringLiteral("2222.7100"));
    EXPECT_EQ(nwind("select printf('%.4f', sum(Freight)) from Orders").toString(),
              QStringLiteral("64942.6900"));
    const TableSummary *orders = nullptr;
    for (const TableSummary &t : fixture.summary().files.at(0).tables)
        if (t.name == "Orders")
            orders = &t;
    ASSERT_NE(orders, nullptr);
    ASSERT_EQ(orders->totals.size(), 1u);
    EXPECT_EQ(orders->totals[0].column, QStringLiteral("Freight"));
    EXPECT_EQ(orders->totals[0].read, 649426900);
    EXPECT_EQ(orders->totals[0].written, 649426900);
}

TEST_F(AccessFiles, SingleValuesKeepTheirDecimalsWithoutNoise)
{
    importSample("nwind.mdb");
    EXPECT_EQ(nwind("select Discount from \"Order Details\" where OrderID = 10250 and "
                    "ProductID = 51")
                  .toDouble(),
              0.15);
}

TEST_F(AccessFiles, NullStaysNullAndTextStaysText)
{
    importSample("nwind.mdb");
    EXPECT_TRUE(nwind("select Region from Customers where CustomerID = 'ALFKI'").isNull());
    EXPECT_EQ(nwind("select count(*) from Customers where Region is null").toInt(), 60);
    EXPECT_EQ(nwind("select count(*) from Customers where Region = ''").toInt(), 0);
    EXPECT_EQ(nwind("select count(*) from Suppliers where HomePage is null").toInt(), 24);
}

TEST_F(AccessFiles, MemoTextIsWhole)
{
    importSample("nwind.mdb");
    const QString notes = nwind("select Notes from Employees where EmployeeID = 2").toString();
    EXPECT_EQ(notes.size(), 448);
    EXPECT_TRUE(notes.startsWith("Andrew received his BTS commercial in 1974"))
        << notes.toStdString();
    EXPECT_TRUE(notes.endsWith("and the Pacific Rim Importers Association."))
        << notes.toStdString();
}

TEST_F(AccessFiles, OleObjectsAreKeptWhole)
{
    importSample("nwind.mdb");
    EXPECT_EQ(nwind("select length(Picture) from Categories where CategoryID = 1").toInt(), 10746);
    EXPECT_EQ(nwind("select length(Photo) from Employees where EmployeeID = 1").toInt(), 21626);
}

TEST_F(AccessFiles, JetThreeDatesAreTheDaysTheyWere)
{
    importSample("nwind.mdb");
    EXPECT_EQ(nwind("select BirthDate from Employees where EmployeeID = 1").toString(),
              QStringLiteral("1948-12-08 00:00:00"));
    EXPECT_EQ(nwind("select HireDate from Employees where EmployeeID = 1").toString(),
              QStringLiteral("1992-05-01 00:00:00"));
}

TEST_F(AccessFiles, JetFourDatesBefore1900AndAfter9000AreCorrect)
{
    importSample("DateTestDatabase.mdb");
    const QString sql = QStringLiteral("select %1 from DateTest where IDCol = %2");
    EXPECT_EQ(dates(sql.arg("DateTimeCol").arg(1)).toString(), "2021-12-02 00:00:00");
    EXPECT_EQ(dates(sql.arg("DateTimeCol").arg(2)).toString(), "9999-01-01 00:00:00");
    EXPECT_EQ(dates(sql.arg("DateTimeCol").arg(3)).toString(), "1898-01-01 00:00:00");
    EXPECT_EQ(dates(sql.arg("DateCol").arg(3)).toString(), "1899-01-01 00:00:00");
    EXPECT_EQ(dates(sql.arg("TimeCol").arg(3)).toString(), "1900-01-01 00:00:00");
    EXPECT_EQ(dates(sql.arg("DateTimeCol").arg(4)).toString(), "0632-01-01 00:00:00");
    EXPECT_EQ(dates(sql.arg("TimeCol").arg(4)).toString(), "0634-01-01 00:00:00");
}

TEST_F(AccessFiles, JetFourTextAndMemoAreDecoded)
{
    importSample("DateTestDatabase.mdb");
    EXPECT_EQ(dates("select count(*) from DateTest").toInt(), 6);
    EXPECT_EQ(dates("select ShortTextCol from DateTest where IDCol = 2").toString(), "Year 1999");
    EXPECT_EQ(dates("select LongTextCol from DateTest where IDCol = 6").toString(),
              "New line\r\nin field");
    EXPECT_EQ(dates("select type from pragma_table_info('DateTest') where name = 'LongTextCol'")
                  .toString(),
              "TEXT");
}

TEST_F(AccessFiles, TheOriginalFilesAreNeverWritten)
{
    const QString path = sample("nwind.mdb");
    FAIL_WITHOUT_SHARED_FILE(path, QStringLiteral("access/nwind.mdb"));
    fixture.copyIntoSource(path, "nwind.mdb");
    QFile::setPermissions(fixture.sourceFile("nwind.mdb"), QFile::ReadOwner | QFile::WriteOwner);
    const QByteArray before = digest(fixture.sourceFile("nwind.mdb"));
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(digest(fixture.sourceFile("nwind.mdb")), before);
}

TEST_F(AccessFiles, BothFilesOfAFolderAreImportedWithASummaryAndLog)
{
    const QString jet3 = sample("nwind.mdb");
    const QString jet4 = sample("DateTestDatabase.mdb");
    FAIL_WITHOUT_SHARED_FILE(jet3, QStringLiteral("access/nwind.mdb"));
    FAIL_WITHOUT_SHARED_FILE(jet4, QStringLiteral("access/DateTestDatabase.mdb"));
    fixture.copyIntoSource(jet3, "nwind.mdb");
    fixture.copyIntoSource(jet4, "DateTestDatabase.mdb");
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(fixture.dataEntries().join(","),
              QStringLiteral("DateTestDatabase.mdb,import.log,nwind.mdb"));
    const QString text = fixture.summary().text();
    EXPECT_TRUE(text.contains("  Order Details: 2155 rows read, 2155 rows written"))
        << text.toStdString();
    EXPECT_TRUE(text.contains("    total of Freight: 64942.6900 read, 64942.6900 written"));
    EXPECT_TRUE(text.contains("  DateTest: 6 rows read, 6 rows written"));
    QFile log(fixture.dataFile("import.log"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(QString::fromUtf8(log.readAll()).contains(text));
    EXPECT_TRUE(fixture.progress().contains("nwind.mdb: Order Details, 2155 of 2155 rows"))
        << fixture.progress().join("\n").toStdString();
}
