#include "data/Schema.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace Schema {
namespace {

using K = Kind;

std::vector<Column> numbered(const QString &stem, int count, Kind kind)
{
    std::vector<Column> cols;
    for (int i = 1; i <= count; ++i)
        cols.push_back({stem + QString::number(i), kind});
    return cols;
}

std::vector<Column> join(std::vector<Column> a, const std::vector<Column> &b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

std::vector<Column> texts(const QStringList &names)
{
    std::vector<Column> cols;
    for (const QString &n : names)
        cols.push_back({n, K::Text});
    return cols;
}

Table vendors()
{
    return {QStringLiteral("vendors"),
            {{"vendnumber", K::Long},
             {"vendname", K::Text},
             {"vendaddr1", K::Text},
             {"vendaddr2", K::Text},
             {"vendcity", K::Text},
             {"vendstate", K::Text},
             {"vendzip", K::Text},
             {"vendphone", K::Text},
             {"vendfax", K::Text},
             {"vendcontact", K::Text},
             {"vcontact2name", K::Text},
             {"vcontact2phone", K::Text},
             {"vcontact2email", K::Text},
             {"email", K::Text},
             {"cell_other", K::Text},
             {"vendacct", K::Text},
             {"vendterms", K::Text},
             {"vendglacct", K::Number},
             {"vendtaxid", K::Text},
             {"vend1099type", K::Long},
             {"vendytd", K::Currency},
             {"vendbalcurrent", K::Currency},
             {"vendbal60", K::Currency},
             {"vendbal90", K::Currency},
             {"pnet", K::Text}},
            {"ix_vendors_number(vendnumber)", "ix_vendors_name(vendname)",
             "ix_vendors_contact(vendcontact)", "ix_vendors_glacct(vendglacct, vendname)"}};
}

Table invoices()
{
    std::vector<Column> cols = {
        {"vendnumber", K::Long},    {"invnumber", K::Text},         {"invdate", K::Date},
        {"invduedate", K::Date},    {"invglperiod", K::Long},       {"invproduct", K::Text},
        {"invamount", K::Currency}, {"invstatus", K::Long},         {"invchecknumber", K::Long},
        {"invcheckdate", K::Date},  {"invcheckamount", K::Currency}};
    cols = join(cols, numbered(QStringLiteral("splitgl"), 10, K::Number));
    cols = join(cols, numbered(QStringLiteral("splitamt"), 10, K::Currency));
    return {QStringLiteral("invoices"),
            cols,
            {"ix_invoices_vendor_date(vendnumber, invdate, invstatus, invchecknumber)",
             "ix_invoices_number(invnumber)", "ix_invoices_check(invchecknumber)",
             "ix_invoices_product(invproduct)", "ix_invoices_checkdate(vendnumber, invcheckdate)"}};
}

Table checks()
{
    return {QStringLiteral("checks"),
            {{"chkpayeenum", K::Long},
             {"chkpayeename", K::Text},
             {"chknum", K::Long},
             {"chkdate", K::Date},
             {"chkamount", K::Currency},
             {"chkref", K::Text},
             {"chkstatus", K::Long}},
            {"ix_checks_payee_date(chkpayeenum, chkdate)", "ix_checks_number(chknum)"}};
}

Table vendnotes()
{
    return {QStringLiteral("vendnotes"),
            {{"vendnumber", K::Long}, {"notes", K::Memo}},
            {"ix_vendnotes_number(vendnumber)"}};
}

Table miscinfo()
{
    return {QStringLiteral("miscinfo"),
            join({{"miscid", K::Long}}, numbered(QStringLiteral("miscdesc"), 30, K::Text)),
            {}};
}

Table miscdata()
{
    return {QStringLiteral("miscdata"),
            join({{"acctid", K::Long}}, numbered(QStringLiteral("miscvalue"), 30, K::Text)),
            {"ix_miscdata_acctid(acctid)"}};
}

Table gl0()
{
    return {QStringLiteral("gl0"),
            {{"glacctnum", K::Number},
             {"glacctname", K::Text},
             {"glstatementdesc", K::Text},
             {"glaccttype", K::Long},
             {"gllevel", K::Long}},
            {"ix_gl0_acctnum(glacctnum)"}};
}

Table ar0()
{
    return {QStringLiteral("ar0"),
            {{"aracctnum", K::Number},
             {"aracctname", K::Text},
             {"araccttype", K::Long},
             {"arlevel", K::Long}},
            {"ix_ar0_acctnum(aracctnum)"}};
}

Table apSettings()
{
    std::vector<Column> cols = {{"apaccess0", K::Long},
                                {"apaccess1", K::Long},
                                {"apaccess2", K::Long},
                                {"apaccess3", K::Long},
                                {"pnetyesno", K::Text}};
    for (int i = 1; i <= 12; ++i)
        cols.push_back({QStringLiteral("f%1key").arg(i), K::Text});
    return {QStringLiteral("ap"), cols, {}};
}

Table company()
{
    return {QStringLiteral("company"),
            texts({"compname", "compaddr1", "compaddr2", "compcity", "compstate", "compzip",
                   "compfederalid"}),
            {}};
}

Table staff()
{
    std::vector<Column> cols = {{"username", K::Text},
                                {"location", K::Text},
                                {"work", K::Text},
                                {"sysuser", K::Long},
                                {"localdrive", K::Text}};
    for (const char *level : {"memlevel", "arlevel", "aplevel", "gllevel", "prlevel", "falevel",
                              "evlevel", "inlevel", "poslevel", "cflevel", "memomail"})
        cols.push_back({QString::fromLatin1(level), K::Long});
    return {QStringLiteral("staff"), cols, {"ix_staff_username(username)"}};
}

Table empinfo()
{
    return {QStringLiteral("empinfo"),
            join({{"empid", K::Long}},
                 texts({"empfname", "emplname", "empmainname", "empaltname", "empaddr1a",
                        "empaddr1b", "empcity1", "empstate1", "empzip1", "empphone1", "empaddr2a",
                        "empaddr2b", "empcity2", "empstate2", "empzip2", "empphone2"})),
            {"ix_empinfo_empid(empid)"}};
}

Table master()
{
    return {QStringLiteral("master"),
            join({{"acctnumber", K::Long}},
                 texts({"fname", "lname", "fullname1", "addr1a", "addr1b", "city1", "state1",
                        "zip1", "phone1a", "fullname2", "addr2a", "addr2b", "city2", "state2",
                        "zip2", "phone2a"})),
            {"ix_master_acctnumber(acctnumber)"}};
}

const QHash<QString, std::vector<Table>> &allFiles()
{
    static const QHash<QString, std::vector<Table>> files = {
        {"ap.mdb", {vendors(), invoices(), checks(), vendnotes(), miscinfo(), miscdata()}},
        {"gl.mdb", {gl0()}},
        {"ar.mdb", {ar0()}},
        {"config.mdb", {apSettings(), company()}},
        {"user.mdb", {staff()}},
        {"emp.mdb", {empinfo(), miscinfo(), miscdata()}},
        {"master.mdb", {master(), miscinfo(), miscdata()}},
    };
    return files;
}

QString declaredType(Kind kind)
{
    switch (kind) {
    case K::Long:
        return QStringLiteral("INTEGER");
    case K::Number:
        return QStringLiteral("DOUBLE");
    case K::Text:
        return QStringLiteral("TEXT");
    case K::Memo:
        return QStringLiteral("TEXT");
    case K::Currency:
        return QStringLiteral("CURRENCY");
    case K::Date:
        return QStringLiteral("INTEGER");
    }
    return QStringLiteral("TEXT");
}

bool run(QSqlDatabase &db, const QString &sql, QString &error)
{
    QSqlQuery q(db);
    if (q.exec(sql))
        return true;
    error = q.lastError().text();
    return false;
}

int storedVersion(QSqlDatabase &db)
{
    QSqlQuery q(db);
    if (q.exec(QStringLiteral("select version from schema_version")) && q.next())
        return q.value(0).toInt();
    return 0;
}

// Step 1: every table, column and index of the file.
bool createTables(QSqlDatabase &db, const QString &fileName, QString &error)
{
    for (const Table &table : tablesOf(fileName)) {
        const QSqlRecord existing = db.record(table.name);
        if (existing.isEmpty()) {
            QStringList defs;
            for (const Column &c : table.columns)
                defs << c.name + QLatin1Char(' ') + declaredType(c.kind);
            if (!run(db, QStringLiteral("create table %1 (%2)").arg(table.name, defs.join(", ")),
                     error))
                return false;
        } else {
            for (const Column &c : table.columns) {
                if (existing.contains(c.name))
                    continue;
                if (!run(db,
                         QStringLiteral("alter table %1 add column %2 %3")
                             .arg(table.name, c.name, declaredType(c.kind)),
                         error))
                    return false;
            }
        }
        for (const QString &index : table.indexes) {
            const qsizetype paren = index.indexOf(QLatin1Char('('));
            if (!run(db,
                     QStringLiteral("create index if not exists %1 on %2 %3")
                         .arg(index.left(paren), table.name, index.mid(paren)),
                     error))
                return false;
        }
    }
    return true;
}

// Whether every table, column and index of the file is there (one cheap look at the catalogue
// per table), so that a column lost from a current file is noticed on the next open.
bool isComplete(QSqlDatabase &db, const QString &fileName)
{
    QSqlQuery q(db);
    q.setForwardOnly(true);
    if (!q.exec(QStringLiteral("select name from sqlite_master where type = 'index'")))
        return false;
    QStringList indexes;
    while (q.next())
        indexes << q.value(0).toString();
    for (const Table &table : tablesOf(fileName)) {
        const QSqlRecord existing = db.record(table.name);
        if (existing.isEmpty())
            return false;
        for (const Column &c : table.columns)
            if (!existing.contains(c.name))
                return false;
        for (const QString &index : table.indexes)
            if (!indexes.contains(index.section(QLatin1Char('('), 0, 0)))
                return false;
    }
    return true;
}

bool dropIndexes(QSqlDatabase &db, std::initializer_list<const char *> names, QString &error)
{
    for (const char *name : names)
        if (!run(db, QStringLiteral("drop index if exists ") + QString::fromLatin1(name), error))
            return false;
    return true;
}

} // namespace

const std::vector<Table> &tablesOf(const QString &fileName)
{
    static const std::vector<Table> none;
    const auto &files = allFiles();
    const auto it = files.find(fileName.toLower());
    return it == files.end() ? none : it.value();
}

Kind columnKind(const QString &table, const QString &column)
{
    for (const auto &tables : allFiles()) {
        for (const Table &t : tables) {
            if (t.name.compare(table, Qt::CaseInsensitive) != 0)
                continue;
            for (const Column &c : t.columns)
                if (c.name.compare(column, Qt::CaseInsensitive) == 0)
                    return c.kind;
        }
    }
    return K::Text;
}

bool isMoney(const QString &table, const QString &column)
{
    return columnKind(table, column) == K::Currency;
}

QString ensure(QSqlDatabase &db, const QString &fileName)
{
    QString error;
    if (!db.tables().contains(QStringLiteral("schema_version"))) {
        if (!run(db, QStringLiteral("create table if not exists schema_version (version INTEGER)"),
                 error))
            return error;
    }
    if (storedVersion(db) >= currentVersion && isComplete(db, fileName))
        return {};
    // The write lock first, so that two copies opening an old file at once take turns and the
    // second finds the work done.
    if (!run(db, QStringLiteral("begin immediate"), error))
        return error;
    const int version = storedVersion(db);
    // Step 2: two invoice indexes of the first layout led the engine to sort a vendor's whole
    // list; the index on vendor and date serves those lists in order.
    const bool ok =
        createTables(db, fileName, error) &&
        (version >= 2 ||
         dropIndexes(db, {"ix_invoices_vendor_status", "ix_invoices_vendor_check"}, error)) &&
        run(db, QStringLiteral("delete from schema_version"), error) &&
        run(db,
            QStringLiteral("insert into schema_version (version) values (%1)").arg(currentVersion),
            error);
    QString ignored;
    if (!ok) {
        run(db, QStringLiteral("rollback"), ignored);
        return error;
    }
    if (!run(db, QStringLiteral("commit"), error)) {
        run(db, QStringLiteral("rollback"), ignored);
        return error;
    }
    return {};
}

} // namespace Schema
