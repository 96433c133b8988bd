#include "DemoCompany.h"
#include "DemoError.h"
#include "DemoInvoices.h"
#include "DemoRandom.h"

#include "data/Money.h"
#include "data/Schema.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <numeric>
#include <utility>

namespace {

constexpr int year = 2026;
constexpr int vendorCount = 40;
constexpr int invoiceCount = 400;

const QStringList databaseFiles = {"config.mdb", "user.mdb",   "gl.mdb", "ar.mdb",
                                   "emp.mdb",    "master.mdb", "ap.mdb"};

using Rows = std::vector<QVariantList>;

// Reads one database file of a generated folder through a read-only connection of its own.
class Reader {
public:
    Reader(const QString &folder, const QString &fileName) :
        m_name(QStringLiteral("demo-test-%1").arg(++s_count))
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        db.setDatabaseName(QDir(folder).absoluteFilePath(fileName));
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        m_open = db.open();
    }
    ~Reader()
    {
        {
            QSqlDatabase db = QSqlDatabase::database(m_name, false);
            db.close();
        }
        QSqlDatabase::removeDatabase(m_name);
    }
    Reader(const Reader &) = delete;
    Reader &operator=(const Reader &) = delete;

    bool isOpen() const { return m_open; }
    QStringList tables() const { return QSqlDatabase::database(m_name, false).tables(); }

    Rows rows(const QString &sql) const
    {
        QSqlQuery q(QSqlDatabase::database(m_name, false));
        q.setForwardOnly(true);
        Rows result;
        if (!q.exec(sql)) {
            ADD_FAILURE() << qPrintable(sql) << ": " << qPrintable(q.lastError().text());
            return result;
        }
        while (q.next()) {
            QVariantList row;
            for (int i = 0; i < q.record().count(); ++i)
                row << q.value(i);
            result.push_back(row);
        }
        return result;
    }

    QVariant scalar(const QString &sql) const
    {
        const Rows r = rows(sql);
        return r.empty() || r.front().isEmpty() ? QVariant() : r.front().front();
    }

    long long count(const QString &sql) const { return scalar(sql).toLongLong(); }

private:
    static inline int s_count = 0;
    QString m_name;
    bool m_open = false;
};

Demo::Options smallCompany(const QString &folder, std::uint64_t seed = 7)
{
    Demo::Options options;
    options.folder = folder;
    options.vendors = vendorCount;
    options.invoices = invoiceCount;
    options.seed = seed;
    options.year = year;
    return options;
}

double money(const QVariant &value)
{
    return Money::round4(value.toDouble());
}

QDate dateOf(int yyyymmdd)
{
    return QDate(yyyymmdd / 10000, yyyymmdd / 100 % 100, yyyymmdd % 100);
}

// The values of one layout record: a quoted text (which may hold commas), then numbers.
QStringList layoutValues(const QString &line)
{
    QStringList values;
    QString current;
    bool quoted = false;
    for (const QChar c : line) {
        if (c == QLatin1Char('"'))
            quoted = !quoted;
        else if (c == QLatin1Char(',') && !quoted)
            values << std::exchange(current, QString());
        else
            current += c;
    }
    values << current;
    return values;
}

QStringList linesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

class DemoCompanyTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_dir = std::make_unique<QTemporaryDir>();
        try {
            s_summary = std::make_unique<Demo::Summary>(
                Demo::generate(smallCompany(s_dir->filePath(QStringLiteral("company")))));
        } catch (const Demo::Error &error) {
            FAIL() << qPrintable(error.text());
        }
    }
    static void TearDownTestSuite()
    {
        s_summary.reset();
        s_dir.reset();
    }
    void SetUp() override { ASSERT_TRUE(s_summary) << "the demo company was not written"; }

    static QString folder() { return s_summary->folder; }
    static QString path(const QString &name) { return QDir(folder()).absoluteFilePath(name); }

    static inline std::unique_ptr<QTemporaryDir> s_dir;
    static inline std::unique_ptr<Demo::Summary> s_summary;
};

TEST_F(DemoCompanyTest, WritesEveryDatabaseFileAsSqliteWithTheModulesTables)
{
    for (const QString &name : databaseFiles) {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
        EXPECT_EQ(file.read(16), QByteArray("SQLite format 3", 16)) << qPrintable(name);
        file.close();
        Reader db(folder(), name);
        ASSERT_TRUE(db.isOpen()) << qPrintable(name);
        const QStringList tables = db.tables();
        for (const Schema::Table &table : Schema::tablesOf(name))
            EXPECT_TRUE(tables.contains(table.name)) << qPrintable(name + " " + table.name);
        EXPECT_FALSE(QFile::exists(path(name + "-wal")) &&
                     QFileInfo(path(name + "-wal")).size() > 0)
            << qPrintable(name) << " left an unfinished write-ahead log";
    }
    for (const char *other :
         {"1099misc.lof", "1099int.lof", "1099div.lof", "1099nec.lof", "vendor1.txt",
          "stafflist.dat"})
        EXPECT_TRUE(QFile::exists(path(QString::fromLatin1(other)))) << other;
}

TEST_F(DemoCompanyTest, SummaryCountsAreTheRowsWritten)
{
    Reader ap(folder(), "ap.mdb");
    EXPECT_EQ(ap.count("select count(*) from vendors"), vendorCount);
    EXPECT_EQ(ap.count("select count(*) from invoices"), invoiceCount);
    EXPECT_EQ(s_summary->ap.vendors, vendorCount);
    EXPECT_EQ(s_summary->ap.invoices, invoiceCount);
    EXPECT_EQ(s_summary->ap.checks, ap.count("select count(*) from checks"));
    EXPECT_EQ(s_summary->ap.notes, ap.count("select count(*) from vendnotes"));
    EXPECT_EQ(s_summary->ap.openInvoices + s_summary->ap.paidInvoices + s_summary->ap.heldInvoices,
              invoiceCount);
    EXPECT_EQ(s_summary->ap.busiestVendor, 0) << "a small company has no extra-busy vendor";
}

TEST_F(DemoCompanyTest, SameOptionsGiveTheSameRowsAndAnotherSeedDoesNot)
{
    QTemporaryDir other;
    Demo::generate(smallCompany(other.filePath("again")));
    Demo::generate(smallCompany(other.filePath("reseeded"), 8));
    const QString again = other.filePath("again");
    for (const char *sql :
         {"select * from vendors order by vendnumber",
          "select * from invoices order by vendnumber, invdate, invnumber",
          "select * from checks order by chknum", "select * from vendnotes order by vendnumber",
          "select * from miscdata order by acctid"}) {
        const Rows first = Reader(folder(), "ap.mdb").rows(QString::fromLatin1(sql));
        const Rows second = Reader(again, "ap.mdb").rows(QString::fromLatin1(sql));
        ASSERT_FALSE(first.empty()) << sql;
        EXPECT_TRUE(first == second) << sql;
    }
    const QString vendors = QStringLiteral("select * from vendors order by vendnumber");
    EXPECT_FALSE(Reader(folder(), "ap.mdb").rows(vendors) ==
                 Reader(other.filePath("reseeded"), "ap.mdb").rows(vendors));
}

TEST_F(DemoCompanyTest, WritingAgainIntoTheSameFolderReplacesTheFiles)
{
    QTemporaryDir other;
    const QString target = other.filePath("twice");
    Demo::generate(smallCompany(target));
    Demo::generate(smallCompany(target));
    Reader ap(target, "ap.mdb");
    EXPECT_EQ(ap.count("select count(*) from vendors"), vendorCount);
    EXPECT_EQ(ap.count("select count(*) from invoices"), invoiceCount);
    EXPECT_EQ(Reader(target, "gl.mdb").count("select count(*) from gl0"), s_summary->accounts);
}

TEST_F(DemoCompanyTest, AFileThatIsNotSqliteIsLeftAloneAndNothingIsWritten)
{
    QTemporaryDir other;
    const QByteArray access = QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(200, 'x');
    QFile ap(other.filePath("ap.mdb"));
    ASSERT_TRUE(ap.open(QIODevice::WriteOnly));
    ap.write(access);
    ap.close();
    EXPECT_THROW(Demo::generate(smallCompany(other.path())), Demo::Error);
    ASSERT_TRUE(ap.open(QIODevice::ReadOnly));
    EXPECT_EQ(ap.readAll(), access);
    EXPECT_FALSE(QFile::exists(other.filePath("config.mdb")));
}

TEST_F(DemoCompanyTest, VendorNumbersAreSpreadAscendingFrom100WithinTheUsualRange)
{
    const Rows rows = Reader(folder(), "ap.mdb").rows("select vendnumber from vendors order by 1");
    ASSERT_EQ(rows.size(), std::size_t(vendorCount));
    EXPECT_EQ(rows.front().front().toInt(), 100);
    EXPECT_LE(rows.back().front().toInt(), 99999);
    int gaps = 0;
    for (std::size_t i = 1; i < rows.size(); ++i) {
        const int step = rows[i].front().toInt() - rows[i - 1].front().toInt();
        EXPECT_GE(step, 1);
        EXPECT_LE(step, 40);
        gaps += step > 1;
    }
    EXPECT_GT(gaps, vendorCount / 2) << "numbers should not be contiguous";
}

TEST_F(DemoCompanyTest, EveryFormTypeAndTheThresholdAmountsArePresent)
{
    Reader ap(folder(), "ap.mdb");
    for (int type = 0; type <= 5; ++type)
        EXPECT_GT(
            ap.count(
                QStringLiteral("select count(*) from vendors where vend1099type = %1").arg(type)),
            0)
            << "type " << type;
    EXPECT_GE(ap.count("select count(*) from vendors where vendytd = 600"), 3);
    EXPECT_GE(ap.count("select count(*) from vendors where round(vendytd, 4) = 599.99"), 1);
    EXPECT_GE(ap.count("select count(*) from vendors where round(vendytd, 4) = 600.01"), 1);
    EXPECT_GE(ap.count("select count(*) from vendors where vendytd = 0"), 1);
    EXPECT_GE(ap.count("select count(*) from vendors where vendytd > 1000"), 1);
    // The boundary cases the 1099 runs care about: MISC counts 600 and up, NEC above 600 only.
    EXPECT_GE(ap.count("select count(*) from vendors where vendytd = 600 and "
                       "(vend1099type = 1 or vend1099type = 4)"),
              1);
    EXPECT_GE(ap.count("select count(*) from vendors where vendytd = 600 and vend1099type = 5"), 1);
    EXPECT_GE(ap.count("select count(*) from vendors where vendytd = 600 and vend1099type = 3"), 1);
}

TEST_F(DemoCompanyTest, VendorTextsIncludeApostrophesNullsAndBothCountries)
{
    Reader ap(folder(), "ap.mdb");
    EXPECT_EQ(ap.count("select count(*) from vendors where vendname = 'O''Brien Catering'"), 1);
    EXPECT_EQ(ap.count("select count(*) from vendors where vendname = 'Mike''s Plumbing'"), 1);
    EXPECT_GE(ap.count("select count(*) from vendors where vendtaxid = '12-345-6789'"), 1);
    EXPECT_GE(ap.count("select count(*) from vendors where vendstate in ('ON', 'QC') "
                       "and vendzip like '___ ___'"),
              1);
    EXPECT_GE(ap.count("select count(*) from vendors where vendzip like '_____-____'"), 1);
    EXPECT_GE(ap.count("select count(*) from vendors where vendaddr2 is null or email is null "
                       "or vendfax is null or cell_other is null"),
              1);
    EXPECT_EQ(ap.count("select count(*) from vendors where length(vendname) > 30"), 0);
    EXPECT_EQ(ap.count("select count(*) from vendors where vendphone not like '___-555-01__'"), 0);
}

TEST_F(DemoCompanyTest, EveryVendorAccountIsInTheChartOfAccounts)
{
    const Rows accounts = Reader(folder(), "gl.mdb").rows("select glacctnum from gl0");
    QSet<double> chart;
    for (const QVariantList &row : accounts)
        chart.insert(row.front().toDouble());
    EXPECT_GE(chart.size(), 50);
    for (const QVariantList &row :
         Reader(folder(), "ap.mdb").rows("select vendnumber, vendglacct from vendors"))
        EXPECT_TRUE(chart.contains(row[1].toDouble())) << row[0].toInt();
    const Reader gl(folder(), "gl.mdb");
    EXPECT_GE(gl.count("select count(*) from gl0 where glstatementdesc is null "
                       "or trim(glstatementdesc) = ''"),
              1);
    EXPECT_GE(gl.count("select count(*) from gl0 where trim(glstatementdesc) <> ''"), 1);
    EXPECT_EQ(gl.count("select count(*) from gl0 where glacctnum = 5100.5"), 1);
}

TEST_F(DemoCompanyTest, EveryInvoiceStatusClassIsPresentAndConsistent)
{
    Reader ap(folder(), "ap.mdb");
    EXPECT_GE(ap.count("select count(*) from invoices where invstatus = 0"), 1);
    for (int status = 1; status <= 5; ++status)
        EXPECT_GE(
            ap.count(
                QStringLiteral("select count(*) from invoices where invstatus = %1").arg(status)),
            1)
            << "status " << status;
    EXPECT_EQ(ap.count("select count(*) from invoices where invstatus <= 3 "
                       "and (invchecknumber <> 0 or invcheckdate <> 0 or invcheckamount <> 0)"),
              0);
    EXPECT_EQ(ap.count("select count(*) from invoices where invstatus >= 4 and "
                       "(invchecknumber < 1001 or invcheckdate < invdate "
                       "or round(invcheckamount, 4) <> round(invamount, 4))"),
              0);
    EXPECT_EQ(ap.count("select count(*) from invoices where invamount <= 0"), 0);
}

TEST_F(DemoCompanyTest, InvoicesCoverLastYearAndThisYearAndFallDueThirtyDaysLater)
{
    const Rows rows =
        Reader(folder(), "ap.mdb").rows("select invdate, invduedate, invglperiod from invoices");
    ASSERT_EQ(rows.size(), std::size_t(invoiceCount));
    int lastYear = 0;
    int thisYear = 0;
    for (const QVariantList &row : rows) {
        const int date = row[0].toInt();
        ASSERT_TRUE(dateOf(date).isValid()) << date;
        EXPECT_EQ(dateOf(row[1].toInt()), dateOf(date).addDays(30)) << date;
        EXPECT_EQ(row[2].toInt(), dateOf(date).month()) << date;
        lastYear += date / 10000 == year - 1;
        thisYear += date / 10000 == year;
    }
    EXPECT_EQ(lastYear + thisYear, invoiceCount);
    EXPECT_GT(lastYear, invoiceCount / 4);
    EXPECT_GT(thisYear, invoiceCount / 4);
}

TEST_F(DemoCompanyTest, SplitAmountsAddUpToTheInvoiceAmount)
{
    QStringList columns = {"invamount", "v.vendglacct"};
    for (int i = 1; i <= 10; ++i)
        columns << QStringLiteral("splitgl%1").arg(i) << QStringLiteral("splitamt%1").arg(i);
    const Rows rows = Reader(folder(), "ap.mdb")
                          .rows("select " + columns.join(", ") +
                                " from invoices i join vendors v on v.vendnumber = i.vendnumber");
    ASSERT_EQ(rows.size(), std::size_t(invoiceCount));
    int split = 0;
    for (const QVariantList &row : rows) {
        EXPECT_EQ(row[2].toDouble(), row[1].toDouble()) << "first line on the vendor's account";
        double sum = 0;
        int lines = 0;
        for (int i = 0; i < 10; ++i) {
            const double account = row[2 + 2 * i].toDouble();
            const double amount = row[3 + 2 * i].toDouble();
            if (account >= 1.0) {
                ++lines;
                EXPECT_GT(amount, 0.0);
            } else {
                EXPECT_EQ(amount, 0.0);
            }
            sum += amount;
        }
        EXPECT_EQ(Money::round4(sum), money(row[0])) << "invoice of " << row[0].toDouble();
        EXPECT_LE(lines, 5);
        split += lines > 1;
    }
    EXPECT_GT(split, invoiceCount / 10);
    EXPECT_LT(split, invoiceCount / 3);
}

TEST_F(DemoCompanyTest, ChecksAreNumberedFrom1001AndMatchThePaidInvoices)
{
    Reader ap(folder(), "ap.mdb");
    const Rows checks = ap.rows("select chknum, chkpayeenum, chkpayeename, chkdate, chkamount, "
                                "chkstatus from checks order by chknum");
    ASSERT_FALSE(checks.empty());
    std::map<int, QVariantList> byNumber;
    int expected = 1001;
    int lastDate = 0;
    for (const QVariantList &row : checks) {
        EXPECT_EQ(row[0].toInt(), expected++);
        EXPECT_GE(row[3].toInt(), lastDate) << "check numbers follow the check dates";
        lastDate = row[3].toInt();
        EXPECT_TRUE(row[5].toInt() == 1 || row[5].toInt() == 2);
        byNumber[row[0].toInt()] = row;
    }
    const Rows paid = ap.rows("select i.invchecknumber, i.vendnumber, v.vendname, "
                              "i.invcheckdate, sum(i.invcheckamount) from invoices i "
                              "join vendors v on v.vendnumber = i.vendnumber "
                              "where i.invchecknumber > 0 group by 1, 2, 3, 4");
    EXPECT_EQ(paid.size(), checks.size()) << "one check per check number, one payee each";
    for (const QVariantList &row : paid) {
        const auto it = byNumber.find(row[0].toInt());
        ASSERT_NE(it, byNumber.end()) << "no check " << row[0].toInt();
        EXPECT_EQ(it->second[1].toInt(), row[1].toInt());
        EXPECT_EQ(it->second[2].toString(), row[2].toString());
        EXPECT_EQ(it->second[3].toInt(), row[3].toInt());
        EXPECT_EQ(money(it->second[4]), money(row[4])) << "check " << row[0].toInt();
        EXPECT_EQ(dateOf(row[3].toInt()).dayOfWeek(), Qt::Friday);
    }
}

TEST_F(DemoCompanyTest, VendorTotalsAreWhatTheirInvoicesGive)
{
    Reader ap(folder(), "ap.mdb");
    const Rows vendors = ap.rows("select vendnumber, vendytd, vendbalcurrent, vendbal60, "
                                 "vendbal90 from vendors");
    for (const QVariantList &v : vendors) {
        const int number = v[0].toInt();
        if (ap.count(QStringLiteral("select count(*) from invoices where vendnumber = %1")
                         .arg(number)) == 0)
            continue;
        const double paid = Money::fromSum(ap.scalar(
            QStringLiteral("select sum(invcheckamount) from invoices where vendnumber = %1 "
                           "and invcheckdate between %2 and %3")
                .arg(number)
                .arg(year * 10000 + 101)
                .arg(year * 10000 + 1231)));
        EXPECT_EQ(money(v[1]), paid) << "vendor " << number;
        const double open = Money::fromSum(
            ap.scalar(QStringLiteral("select sum(invamount) from invoices where vendnumber = %1 "
                                     "and invstatus > 0 and invstatus < 4")
                          .arg(number)));
        EXPECT_EQ(Money::round4(v[2].toDouble() + v[3].toDouble() + v[4].toDouble()), open)
            << "vendor " << number;
    }
    EXPECT_EQ(ap.count("select count(*) from vendors where vendbalcurrent = 1234.5"), 1);
}

TEST_F(DemoCompanyTest, NotesAndUserDefinedDataBelongToVendors)
{
    Reader ap(folder(), "ap.mdb");
    const long long notes = ap.count("select count(*) from vendnotes");
    EXPECT_GE(notes, vendorCount / 6);
    EXPECT_LE(notes, vendorCount / 2 + 2);
    EXPECT_EQ(ap.count("select count(*) from vendnotes where notes is null"), 1);
    EXPECT_GE(ap.count("select count(*) from vendnotes where notes like '%' || char(10) || '%'"),
              1);
    EXPECT_EQ(ap.count("select count(*) from vendnotes where vendnumber not in "
                       "(select vendnumber from vendors)"),
              0);
    EXPECT_EQ(ap.count("select count(*) from miscinfo"), 1);
    EXPECT_EQ(ap.scalar("select miscid from miscinfo").toInt(), 1);
    EXPECT_EQ(ap.scalar("select miscdesc2 from miscinfo").toString(), "W-9 on file");
    EXPECT_EQ(ap.scalar("select miscdesc30 from miscinfo").toString(), "");
    EXPECT_EQ(ap.count("select count(*) from miscinfo where length(miscdesc1) > 20"), 0);
    EXPECT_GE(ap.count("select count(*) from miscdata"), 1);
    EXPECT_EQ(ap.count("select count(*) from miscdata where acctid not in "
                       "(select vendnumber from vendors)"),
              0);
}

TEST_F(DemoCompanyTest, SettingsStaffAndCompanyRows)
{
    Reader config(folder(), "config.mdb");
    const Rows settings = config.rows("select apaccess0, apaccess1, apaccess2, apaccess3, "
                                      "pnetyesno, f1key, f6key from ap");
    ASSERT_EQ(settings.size(), 1u);
    EXPECT_EQ(settings[0][0].toInt(), 10);
    EXPECT_EQ(settings[0][1].toInt(), 50);
    EXPECT_EQ(settings[0][2].toInt(), 50);
    EXPECT_EQ(settings[0][3].toInt(), 70);
    EXPECT_EQ(settings[0][4].toString(), "N");
    EXPECT_EQ(settings[0][5].toString(), "Springfield");
    EXPECT_EQ(settings[0][6].toString(), "555-");
    EXPECT_EQ(config.scalar("select compfederalid from company").toString(), "36-1234567");
    EXPECT_EQ(config.count("select count(*) from company"), 1);

    Reader user(folder(), "user.mdb");
    const Rows demo = user.rows("select sysuser, localdrive, location, work, memlevel, arlevel, "
                                "aplevel, gllevel, prlevel, falevel, evlevel, inlevel, poslevel, "
                                "cflevel from staff where username = 'DEMO'");
    ASSERT_EQ(demo.size(), 1u);
    EXPECT_EQ(demo[0][0].toInt(), 1);
    EXPECT_EQ(demo[0][1].toString(), QDir(folder()).absoluteFilePath("local/DEMO"));
    EXPECT_EQ(demo[0][2].toString(), "A/P Master");
    EXPECT_EQ(demo[0][3].toString(), "");
    for (int i = 4; i < 14; ++i)
        EXPECT_EQ(demo[0][i].toInt(), 99) << "level column " << i;
    EXPECT_EQ(user.scalar("select aplevel from staff where username = 'CLERK'").toInt(), 20);
    EXPECT_EQ(user.scalar("select sysuser from staff where username = 'CLERK'").toInt(), 2);
    EXPECT_EQ(user.scalar("select aplevel from staff where username = 'MANAGER'").toInt(), 80);

    EXPECT_GE(Reader(folder(), "ar.mdb").count("select count(*) from ar0"), 1);
    EXPECT_GE(Reader(folder(), "emp.mdb").count("select count(*) from empinfo"), 1);
    EXPECT_EQ(Reader(folder(), "emp.mdb").count("select count(*) from miscinfo"), 1);
    EXPECT_GE(Reader(folder(), "master.mdb").count("select count(*) from master"), 1);
    EXPECT_EQ(Reader(folder(), "master.mdb").count("select count(*) from miscinfo"), 1);
}

struct LayoutCase {
    const char *file;
    int records;
    const char *caption;
    int formsPerPage;
    std::vector<int> usedElements;
};

void PrintTo(const LayoutCase &layout, std::ostream *out)
{
    *out << layout.file;
}

class DemoLayoutTest : public DemoCompanyTest, public ::testing::WithParamInterface<LayoutCase> {};

TEST_P(DemoLayoutTest, LayoutFileHoldsEveryElementThePrintRunUses)
{
    const LayoutCase &c = GetParam();
    const QStringList lines = linesOf(path(QString::fromLatin1(c.file)));
    ASSERT_EQ(lines.size(), c.records);
    const QStringList header = layoutValues(lines.first());
    ASSERT_EQ(header.size(), 5);
    EXPECT_EQ(header[0], QString::fromLatin1(c.caption));
    bool ok[4] = {};
    const double x0 = header[1].toDouble(&ok[0]);
    const double y0 = header[2].toDouble(&ok[1]);
    const double spacing = header[3].toDouble(&ok[2]);
    header[4].toDouble(&ok[3]);
    for (bool each : ok)
        EXPECT_TRUE(each) << qPrintable(lines.first());
    EXPECT_GT(spacing * c.formsPerPage, 10.0);
    EXPECT_LE(spacing * c.formsPerPage, 11.0);
    EXPECT_TRUE(lines.first().startsWith(QLatin1Char('"')));
    for (int i = 1; i < lines.size(); ++i) {
        const QStringList values = layoutValues(lines[i]);
        ASSERT_EQ(values.size(), 3) << qPrintable(lines[i]);
        bool okX = false;
        bool okY = false;
        const double x = values[1].toDouble(&okX);
        const double y = values[2].toDouble(&okY);
        EXPECT_TRUE(okX && okY) << qPrintable(lines[i]);
        EXPECT_GE(x, 0.0);
        EXPECT_LT(x0 + x, 8.0) << qPrintable(lines[i]);
        EXPECT_LT(y0 + y + spacing * (c.formsPerPage - 1), 11.0) << qPrintable(lines[i]);
        EXPECT_LT(y, spacing) << "element stays within its own form: " << qPrintable(lines[i]);
    }
    for (int element : c.usedElements)
        EXPECT_LT(element, lines.size()) << "element " << element;
}

INSTANTIATE_TEST_SUITE_P(
    Forms, DemoLayoutTest,
    ::testing::Values(
        LayoutCase{
            "1099misc.lof", 26, "2026 MISC", 2, {0, 1, 3, 7, 14, 19, 20, 21, 22, 23, 24, 25}},
        LayoutCase{"1099div.lof", 26, "2026 DIV", 2, {0, 1, 19, 20, 21, 22, 23, 24, 25}},
        LayoutCase{"1099int.lof", 15, "2026 INT", 3, {0, 1, 8, 9, 10, 11, 12, 13, 14}},
        LayoutCase{
            "1099nec.lof", 15, "2026 NEC", 3, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}}),
    [](const ::testing::TestParamInfo<LayoutCase> &info) {
        return QString::fromLatin1(info.param.file).section(QLatin1Char('.'), 0, 0).toStdString();
    });

TEST(DemoBigVendor, TheFirstVendorGetsTheAskedInvoicesAndTheOthersTwelveEachOnAverage)
{
    QTemporaryDir dir;
    Demo::Options options = smallCompany(dir.filePath(QStringLiteral("big")));
    options.vendors = 5;
    options.invoices = -1;
    options.bigVendor = 700;
    const Demo::Summary summary = Demo::generate(options);
    EXPECT_EQ(summary.ap.busiestInvoices, 700);
    EXPECT_EQ(summary.ap.invoices, 700 + 4 * 12);
    Reader ap(summary.folder, "ap.mdb");
    EXPECT_EQ(ap.count(QStringLiteral("select count(*) from invoices where vendnumber = %1")
                           .arg(summary.ap.busiestVendor)),
              700);
    EXPECT_EQ(ap.count(QStringLiteral("select count(*) from invoices where vendnumber <> %1")
                           .arg(summary.ap.busiestVendor)),
              48);
}

TEST(DemoBigVendor, MoreInvoicesForTheBigVendorThanInAllIsRefused)
{
    QTemporaryDir dir;
    Demo::Options options = smallCompany(dir.filePath(QStringLiteral("big")));
    options.vendors = 5;
    options.invoices = 100;
    options.bigVendor = 101;
    EXPECT_THROW(Demo::generate(options), Demo::Error);
}

TEST(DemoInvoiceCounts, ABigCompanysFirstVendorGetsItsFixedShareAndTheTotalIsExact)
{
    std::vector<bool> needsOne(5000, false);
    for (std::size_t i = 1; i < needsOne.size(); i += 263)
        needsOne[i] = true;
    Demo::Random random(3);
    const std::vector<int> counts = Demo::Invoices::counts(1000000, 20000, needsOne, random);
    ASSERT_EQ(counts.size(), needsOne.size());
    EXPECT_EQ(counts.front(), 20000);
    EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), 0LL), 1000000LL);
    for (std::size_t i = 0; i < counts.size(); ++i) {
        EXPECT_GE(counts[i], 0);
        if (needsOne[i]) {
            EXPECT_GE(counts[i], 1) << i;
        }
    }
}

TEST(DemoInvoiceCounts, FewerInvoicesThanVendorsStillAddUp)
{
    Demo::Random random(5);
    const std::vector<int> counts = Demo::Invoices::counts(7, -1, std::vector<bool>(20), random);
    EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), 0), 7);
}

TEST(DemoInvoiceSplit, PartsArePositiveAndAddUpExactly)
{
    Demo::Random random(11);
    for (const auto &[cents, parts] : std::vector<std::pair<qint64, int>>{
             {100, 3}, {5, 5}, {123456789, 10}, {60000, 7}, {2, 1}}) {
        const std::vector<qint64> split = Demo::Invoices::split(cents, parts, random);
        ASSERT_EQ(split.size(), std::size_t(parts));
        EXPECT_EQ(std::accumulate(split.begin(), split.end(), qint64(0)), cents);
        for (qint64 part : split)
            EXPECT_GE(part, 1);
    }
}

} // namespace
