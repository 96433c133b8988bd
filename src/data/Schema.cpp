#include "data/Schema.h"

#include "data/Dialect.h"
#include "data/TableRebuild.h"

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

// An index of only the rows a re-sorted unpaid or paid list shows, with its condition.
QString unpaid(const char *index)
{
    return QString::fromLatin1(index) + QLatin1String(" where invstatus > 0 and invstatus < 4");
}

QString paid(const char *index)
{
    return QString::fromLatin1(index) + QLatin1String(" where invstatus > 0 and invstatus > 3");
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
            {// The lookups by invoice, check and product.
             QStringLiteral("ix_invoices_number(invnumber)"),
             QStringLiteral("ix_invoices_check(invchecknumber)"),
             QStringLiteral("ix_invoices_product(invproduct)"),
             // This year's total, read from the index alone, and the re-sorts by date.
             QStringLiteral("ix_invoices_vendor_date_amount(vendnumber, invdate, invstatus, "
                            "invamount)"),
             // The unpaid and paid lists and their re-sorts each come in the order of an index
             // of just the rows they show, made with the statement's own condition word for
             // word: the engine uses such an index only for a statement with that condition,
             // so no index with the condition's column in front can tempt it to sort a list.
             // The condition's column is in the index, so that a list is counted from the
             // index alone. The unpaid amounts also give the open-invoice total.
             QStringLiteral("ix_invoices_unpaid_list(vendnumber, invdate, invstatus) where "
                            "invstatus > 0 and invstatus <= 3"),
             QStringLiteral("ix_invoices_paid_list(vendnumber, invdate, invchecknumber) where "
                            "invchecknumber > 0"),
             unpaid("ix_invoices_unpaid_amount(vendnumber, invamount, invstatus)"),
             unpaid("ix_invoices_unpaid_number(vendnumber, invnumber, invdate)"),
             unpaid("ix_invoices_unpaid_product(vendnumber, invproduct)"),
             unpaid("ix_invoices_unpaid_due(vendnumber, invduedate)"),
             unpaid("ix_invoices_unpaid_period(vendnumber, invglperiod, invdate)"),
             paid("ix_invoices_paid_number(vendnumber, invnumber, invdate)"),
             paid("ix_invoices_paid_product(vendnumber, invproduct)"),
             paid("ix_invoices_paid_amount(vendnumber, invamount)"),
             paid("ix_invoices_paid_due(vendnumber, invduedate)"),
             paid("ix_invoices_paid_checknumber(vendnumber, invchecknumber)"),
             paid("ix_invoices_paid_checkdate(vendnumber, invcheckdate)"),
             paid("ix_invoices_paid_checkamount(vendnumber, invcheckamount)"),
             paid("ix_invoices_paid_period(vendnumber, invglperiod, invdate)")}};
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

// Every table and column of the file; a new table's text columns get the case-blind collation.
bool createTables(QSqlDatabase &db, const QString &fileName, const Dialect &dialect,
                  QString &error)
{
    for (const Table &table : tablesOf(fileName)) {
        const QSqlRecord existing = db.record(table.name);
        if (existing.isEmpty()) {
            QStringList defs;
            for (const Column &c : table.columns)
                defs << c.name + QLatin1Char(' ') + dialect.columnType(c.kind);
            if (!run(db, QStringLiteral("create table %1 (%2)").arg(table.name, defs.join(", ")),
                     error))
                return false;
            if (table.name == QLatin1String("miscinfo") &&
                !run(db, QStringLiteral("insert into miscinfo (miscid) values (1)"), error))
                return false; // the one row of descriptions; without it nothing could be saved
        } else {
            for (const Column &c : table.columns) {
                if (existing.contains(c.name))
                    continue;
                if (!run(db,
                         QStringLiteral("alter table %1 add column %2 %3")
                             .arg(table.name, c.name, dialect.columnType(c.kind)),
                         error))
                    return false;
            }
        }
    }
    return true;
}

bool createIndexes(QSqlDatabase &db, const QString &fileName, const Dialect &dialect,
                   QString &error)
{
    for (const Table &table : tablesOf(fileName)) {
        for (const QString &index : table.indexes) {
            const qsizetype paren = index.indexOf(QLatin1Char('('));
            const qsizetype close = index.indexOf(QLatin1Char(')'), paren);
            const QString columns = dialect.indexColumns(index.mid(paren + 1, close - paren - 1));
            if (!run(db,
                     QStringLiteral("create index if not exists %1 on %2 (%3)%4")
                         .arg(index.left(paren), table.name, columns, index.mid(close + 1)),
                     error))
                return false;
        }
    }
    return true;
}

// Indexes of earlier layouts, dropped by the steps below and never made again.
const QStringList &retiredIndexes()
{
    static const QStringList names = {
        // Step 2: they led the engine to sort a vendor's whole list.
        QStringLiteral("ix_invoices_vendor_status"), QStringLiteral("ix_invoices_vendor_check"),
        // Step 4: replaced by indexes that also hold the amounts.
        QStringLiteral("ix_invoices_vendor_date"), QStringLiteral("ix_invoices_checkdate")};
    return names;
}

bool dropIndexes(QSqlDatabase &db, const QStringList &names, QString &error)
{
    for (const QString &name : names)
        if (!run(db, QStringLiteral("drop index if exists ") + name, error))
            return false;
    return true;
}

// Step 3: tables made before text compared without regard to case are made again.
bool rebuildWithNocase(QSqlDatabase &db, const QString &fileName, bool &rebuilt, QString &error)
{
    for (const Table &table : tablesOf(fileName)) {
        if (!TableRebuild::lacksNocase(db, table))
            continue;
        if (!TableRebuild::withNocase(db, table, retiredIndexes(), error))
            return false;
        rebuilt = true;
    }
    return true;
}

// Whether every table, column and index of the file is there (one cheap look at the catalogue
// per table), so that a column lost from a current file is noticed on the next open.
bool isComplete(QSqlDatabase &db, const QString &fileName, const Dialect &dialect)
{
    const QStringList indexes = dialect.indexNames(db);
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

std::optional<Kind> layoutKind(const QString &column)
{
    for (const auto &tables : allFiles())
        for (const Table &t : tables)
            for (const Column &c : t.columns)
                if (c.name.compare(column, Qt::CaseInsensitive) == 0)
                    return c.kind;
    return std::nullopt;
}

bool isMoney(const QString &table, const QString &column)
{
    return columnKind(table, column) == K::Currency;
}

QString ensure(QSqlDatabase &db, const QString &fileName, const Dialect &dialect)
{
    if (!db.record(QStringLiteral("schema_version")).isEmpty() &&
        storedVersion(db) >= currentVersion && isComplete(db, fileName, dialect))
        return {};
    // The write lock first, so that two copies opening an old file at once take turns and the
    // second finds the work done.
    QString error;
    QString ignored;
    for (const QString &statement : dialect.beginSchemaChange(fileName))
        if (!run(db, statement, error)) {
            run(db, QStringLiteral("rollback"), ignored);
            return error;
        }
    if (!run(db, QStringLiteral("create table if not exists schema_version (version INTEGER)"),
             error)) {
        run(db, QStringLiteral("rollback"), ignored);
        return error;
    }
    const int version = storedVersion(db);
    // Steps 2 and 4 drop the retired indexes (step 2: two that made the engine sort a vendor's
    // whole list; step 4: two replaced by covering ones); step 3 makes tables again for the
    // case-blind collation before their indexes are made, so that each index is built once.
    bool rebuilt = false;
    const bool ok =
        createTables(db, fileName, dialect, error) &&
        (version >= 4 || dropIndexes(db, retiredIndexes(), error)) &&
        (version >= 3 || !dialect.hasCaseSensitiveTables() ||
         rebuildWithNocase(db, fileName, rebuilt, error)) &&
        createIndexes(db, fileName, dialect, error) &&
        run(db, QStringLiteral("delete from schema_version"), error) &&
        run(db,
            QStringLiteral("insert into schema_version (version) values (%1)").arg(currentVersion),
            error);
    if (!ok) {
        run(db, QStringLiteral("rollback"), ignored);
        return error;
    }
    if (!run(db, QStringLiteral("commit"), error)) {
        run(db, QStringLiteral("rollback"), ignored);
        return error;
    }
    // A rebuilt table passed whole through the write-ahead log: give its space back now.
    if (rebuilt)
        for (const QString &statement : dialect.afterRebuild())
            run(db, statement, ignored);
    return {};
}

QString makeTablesInTransaction(QSqlDatabase &db, const QString &fileName, const Dialect &dialect)
{
    QString error;
    const bool ok =
        run(db, QStringLiteral("create table schema_version (version INTEGER)"), error) &&
        createTables(db, fileName, dialect, error) &&
        run(db,
            QStringLiteral("insert into schema_version (version) values (%1)").arg(currentVersion),
            error);
    return ok ? QString() : error;
}

QString makeIndexesInTransaction(QSqlDatabase &db, const QString &fileName, const Dialect &dialect)
{
    QString error;
    return createIndexes(db, fileName, dialect, error) ? QString() : error;
}

} // namespace Schema
