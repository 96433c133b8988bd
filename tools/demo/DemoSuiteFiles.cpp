#include "DemoSuiteFiles.h"

#include "BulkFile.h"
#include "DemoLedger.h"

#include <QDir>

namespace Demo {
namespace {

constexpr int userFields = 30;

QStringList numberedColumns(const QString &key, const QString &stem)
{
    QStringList columns = {key};
    for (int i = 1; i <= userFields; ++i)
        columns << stem + QString::number(i);
    return columns;
}

void addRow(Insert &row, const QVariantList &values)
{
    for (const QVariant &value : values)
        row << value;
    row.exec();
}

// One miscinfo row of descriptions and miscdata rows of values (the rest of the 30 fields are
// left empty).
void writeUserFields(const BulkFile &file, const QStringList &descriptions,
                     const QList<QPair<int, QStringList>> &values)
{
    QSqlQuery(file.database())
        .exec(QStringLiteral("delete from miscinfo")); // the row a new file starts with
    Insert info(file, QStringLiteral("miscinfo"), numberedColumns("miscid", "miscdesc"));
    info << 1;
    for (int i = 0; i < userFields; ++i)
        info << (i < descriptions.size() ? descriptions.at(i) : QStringLiteral(""));
    info.exec();
    Insert data(file, QStringLiteral("miscdata"), numberedColumns("acctid", "miscvalue"));
    for (const auto &[account, texts] : values) {
        data << account;
        for (int i = 0; i < userFields; ++i)
            data << (i < texts.size() ? texts.at(i) : QStringLiteral(""));
        data.exec();
    }
}

struct Person {
    int id;
    const char *first, *last, *addr, *city, *state, *zip, *phone;
};

const QList<Person> &employees()
{
    static const QList<Person> people = {
        {1, "Karen", "Whitfield", "1804 South Grand Avenue East", "Springfield", "IL", "62703-2210",
         "217-555-0161"},
        {2, "Luis", "Ortega", "22 Lake Pointe Drive", "Chatham", "IL", "62629", "217-555-0162"},
        {3, "Dana", "O'Keefe", "905 West Monroe Street", "Springfield", "IL", "62704-1420",
         "217-555-0163"},
        {4, "Raymond", "Tucker", "3110 Cider Mill Lane", "Springfield", "IL", "62702",
         "217-555-0164"},
        {5, "Mei", "Chen", "77 Bunn Park Drive", "Springfield", "IL", "62703", "217-555-0165"}};
    return people;
}

const QList<Person> &members()
{
    static const QList<Person> people = {
        {1001, "Harold", "Jensen", "1200 North Fifth Street", "Springfield", "IL", "62702",
         "217-555-0171"},
        {1002, "Patricia", "Lindqvist", "41 Oak Knoll Road", "Rochester", "IL", "62563",
         "217-555-0172"},
        {1004, "George", "Abernathy", "655 Chatham Road", "Springfield", "IL", "62704-3316",
         "217-555-0173"},
        {1007, "Rosa", "Delgado", "18 Meadowbrook Lane", "Sherman", "IL", "62684", "217-555-0174"},
        {1010, "Tom", "O'Hara", "2300 Wabash Avenue", "Springfield", "IL", "62704", "217-555-0175"},
        {1012, "Nadia", "Haddad", "9 Woodland Court", "Petersburg", "IL", "62675", "217-555-0176"},
        {1015, "Frank", "Kowalski", "500 East Capitol Avenue", "Springfield", "IL", "62701",
         "217-555-0177"},
        {1021, "Evelyn", "Brooks", "1420 Spring Street", "Jacksonville", "IL", "62650",
         "217-555-0178"}};
    return people;
}

} // namespace

const Company &organisation()
{
    static const Company company = {"Greater Springfield Chamber of Commerce",
                                    "215 South Sixth Street",
                                    "Suite 400",
                                    "Springfield",
                                    "IL",
                                    "62701-1504",
                                    "36-1234567",
                                    "217-555-0100"};
    return company;
}

int writeConfig(const QDir &folder)
{
    BulkFile file(folder, QStringLiteral("config.mdb"));
    file.begin();
    {
        QStringList columns = {"apaccess0", "apaccess1", "apaccess2", "apaccess3", "pnetyesno"};
        for (int i = 1; i <= 12; ++i)
            columns << QStringLiteral("f%1key").arg(i);
        Insert settings(file, QStringLiteral("ap"), columns);
        // F1 and F6-F9 fill the city, telephone prefixes, state and ZIP of a local vendor.
        addRow(settings, {10, 50, 50, 70, "N", "Springfield", "", "", "", "", "555-", "(217) ",
                          "IL", "62701", "", "", ""});
        const Company &c = organisation();
        Insert company(file, QStringLiteral("company"),
                       {"compname", "compaddr1", "compaddr2", "compcity", "compstate", "compzip",
                        "compfederalid"});
        addRow(company, {c.name, c.addr1, c.addr2, c.city, c.state, c.zip, c.federalId});
    }
    file.commit();
    file.finish();
    return 1;
}

QStringList staffNames()
{
    return {"DEMO", "CLERK", "MANAGER"};
}

int writeStaff(const QDir &folder)
{
    BulkFile file(folder, QStringLiteral("user.mdb"));
    file.begin();
    {
        Insert row(file, QStringLiteral("staff"),
                   {"username", "location", "work", "sysuser", "localdrive", "memlevel", "arlevel",
                    "aplevel", "gllevel", "prlevel", "falevel", "evlevel", "inlevel", "poslevel",
                    "cflevel", "memomail"});
        const QString location = QStringLiteral("A/P Master");
        const auto local = [&](const char *name) {
            return folder.absoluteFilePath(QStringLiteral("local/") + QLatin1String(name));
        };
        // name, location, work, sysuser, local folder, the levels (mem, ar, ap, gl, pr, fa, ev,
        // in, pos, cf) and memomail
        addRow(row,
               {"DEMO", location, "", 1, local("DEMO"), 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 0});
        addRow(row,
               {"CLERK", location, "", 2, local("CLERK"), 20, 20, 20, 10, 0, 0, 20, 10, 20, 0, 0});
        addRow(row, {"MANAGER", location, "", 3, local("MANAGER"), 80, 80, 80, 80, 60, 80, 80, 80,
                     80, 80, 1});
    }
    file.commit();
    file.finish();
    return 3;
}

int writeLedger(const QDir &folder)
{
    BulkFile file(folder, QStringLiteral("gl.mdb"));
    file.begin();
    {
        Insert row(file, QStringLiteral("gl0"),
                   {"glacctnum", "glacctname", "glstatementdesc", "glaccttype", "gllevel"});
        for (const Account &a : Ledger::chart())
            addRow(row, {a.number, a.name, textOrNull(a.statementDesc), a.type, a.level});
    }
    file.commit();
    file.finish();
    return int(Ledger::chart().size());
}

int writeArAccounts(const QDir &folder)
{
    BulkFile file(folder, QStringLiteral("ar.mdb"));
    file.begin();
    {
        Insert row(file, QStringLiteral("ar0"),
                   {"aracctnum", "aracctname", "araccttype", "arlevel"});
        addRow(row, {1300, "Inventory - publications", 1, 0});
        addRow(row, {1310, "Inventory - logo merchandise", 1, 0});
        addRow(row, {1320, "Inventory - conference supplies", 1, 20});
        addRow(row, {4400, "Publication sales", 4, 0});
        addRow(row, {4410, "Merchandise sales", 4, 0});
    }
    file.commit();
    file.finish();
    return 5;
}

int writeEmployees(const QDir &folder)
{
    BulkFile file(folder, QStringLiteral("emp.mdb"));
    file.begin();
    {
        Insert row(file, QStringLiteral("empinfo"),
                   {"empid", "empfname", "emplname", "empmainname", "empaltname", "empaddr1a",
                    "empaddr1b", "empcity1", "empstate1", "empzip1", "empphone1", "empaddr2a",
                    "empaddr2b", "empcity2", "empstate2", "empzip2", "empphone2"});
        for (const Person &p : employees()) {
            const QString full =
                QString::fromUtf8(p.first) + QLatin1Char(' ') + QString::fromUtf8(p.last);
            addRow(row, {p.id, p.first, p.last, full, "", p.addr, "", p.city, p.state, p.zip,
                         p.phone, "", "", "", "", "", ""});
        }
        writeUserFields(
            file,
            {"Emergency contact", "Emergency phone", "Hire date", "Shirt size", "Parking space"},
            {{1, {"Tom Whitfield", "217-555-0181", "03/01/2014", "M", "4"}},
             {2, {"Ana Ortega", "217-555-0182", "09/15/2019", "L", ""}},
             {3, {"Sean O'Keefe", "217-555-0183", "01/06/2022", "S", "7"}}});
    }
    file.commit();
    file.finish();
    return int(employees().size());
}

int writeMembers(const QDir &folder)
{
    BulkFile file(folder, QStringLiteral("master.mdb"));
    file.begin();
    {
        Insert row(file, QStringLiteral("master"),
                   {"acctnumber", "fname", "lname", "fullname1", "addr1a", "addr1b", "city1",
                    "state1", "zip1", "phone1a", "fullname2", "addr2a", "addr2b", "city2", "state2",
                    "zip2", "phone2a"});
        for (const Person &p : members()) {
            const QString full =
                QString::fromUtf8(p.first) + QLatin1Char(' ') + QString::fromUtf8(p.last);
            addRow(row, {p.id, p.first, p.last, full, p.addr, "", p.city, p.state, p.zip, p.phone,
                         "", "", "", "", "", "", ""});
        }
        writeUserFields(
            file, {"Member since", "Committee", "Dues category", "Newsletter", "Board term ends"},
            {{1001, {"1998", "Finance", "Business", "E-mail", "2027"}},
             {1004, {"2011", "Events", "Individual", "Mail", ""}},
             {1015, {"2020", "", "Non-profit", "E-mail", ""}}});
    }
    file.commit();
    file.finish();
    return int(members().size());
}

} // namespace Demo
