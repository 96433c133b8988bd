#include "frmmisc/ReportRecord.h"

#include "data/Connection.h"
#include "data/Databases.h"
#include "data/DbError.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStandardPaths>

#include <algorithm>

namespace {

constexpr int fieldCount = 30;

QString textOf(const QSqlQuery &q, const QSqlRecord &shape, const QString &column)
{
    const int at = shape.indexOf(column);
    return at < 0 ? QString() : q.value(at).toString();
}

QStringList valuesOf(const QSqlQuery &q, const QSqlRecord &shape)
{
    QStringList values;
    for (int i = 1; i <= fieldCount; ++i)
        values << textOf(q, shape, QStringLiteral("miscvalue%1").arg(i));
    return values;
}

// A path may travel in the report request only when it holds neither of the request's
// separators.
bool fitsRequest(const QString &path)
{
    return !path.contains(QLatin1Char('~')) && !path.contains(QLatin1Char('\n')) &&
           !path.contains(QLatin1Char('\r'));
}

} // namespace

const QStringList &ReportRecord::headingColumns()
{
    static const QStringList columns = {
        "lname",   "fname",     "fullname1", "addr1a", "addr1b", "city1",  "state1", "zip1",
        "phone1a", "fullname2", "addr2a",    "addr2b", "city2",  "state2", "zip2",   "phone2a"};
    return columns;
}

const QHash<QString, QString> &ReportRecord::employeeColumns()
{
    static const QHash<QString, QString> columns = {
        {"lname", "emplname"},       {"fname", "empfname"},   {"fullname1", "empmainname"},
        {"addr1a", "empaddr1a"},     {"addr1b", "empaddr1b"}, {"city1", "empcity1"},
        {"state1", "empstate1"},     {"zip1", "empzip1"},     {"phone1a", "empphone1"},
        {"fullname2", "empaltname"}, {"addr2a", "empaddr2a"}, {"addr2b", "empaddr2b"},
        {"city2", "empcity2"},       {"state2", "empstate2"}, {"zip2", "empzip2"},
        {"phone2a", "empphone2"}};
    return columns;
}

QString ReportRecord::pathFor(const QString &localDrive, const QString &userName)
{
    QString user = userName;
    user.remove(QRegularExpression(QStringLiteral("[^A-Za-z0-9_-]")));
    if (user.isEmpty())
        user = QStringLiteral("user");
    const QString name = QStringLiteral("miscreport-%1.mdb").arg(user.toLower());
    const QFileInfo local(localDrive.trimmed());
    if (!localDrive.trimmed().isEmpty() && local.isDir() && local.isWritable()) {
        const QString path = QDir(local.absoluteFilePath()).absoluteFilePath(name);
        if (fitsRequest(path))
            return path;
    }
    // Otherwise the user's own cache folder, not the shared temporary folder, where anyone
    // could put a file or a link of that name first.
    const QString cache = fallbackFolder();
    if (QDir().mkpath(cache) && fitsRequest(cache))
        return QDir(cache).absoluteFilePath(name);
    return QDir(QDir::tempPath()).absoluteFilePath(name);
}

QString ReportRecord::fallbackFolder()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation))
        .absoluteFilePath(QStringLiteral("velmora"));
}

std::vector<ReportRecord::Account>
ReportRecord::gather(Databases &dbs, const QStringList &shownValues, bool allAccounts) const
{
    std::vector<Account> accounts;
    const QString file = m_call.databaseFile();
    ScopedDatabase scope(dbs, file);
    if (allAccounts) {
        QSqlQuery q = dbs.select(file, QStringLiteral("select * from miscdata order by acctid"));
        const QSqlRecord shape = q.record();
        bool recalledSeen = false;
        while (q.next()) {
            Account account;
            account.acctid = q.value(shape.indexOf(QStringLiteral("acctid"))).toLongLong();
            if (account.acctid == m_call.account) {
                if (recalledSeen)
                    continue;
                recalledSeen = true;
                account.values = shownValues;
            } else {
                account.values = valuesOf(q, shape);
            }
            accounts.push_back(account);
        }
        q.finish();
        if (!recalledSeen) {
            Account recalled{m_call.account, {}, shownValues};
            auto at = std::find_if(accounts.begin(), accounts.end(),
                                   [&](const Account &a) { return a.acctid > m_call.account; });
            accounts.insert(at, recalled);
        }
    } else {
        accounts.push_back({m_call.account, {}, shownValues});
    }
    addHeadings(dbs, accounts);
    return accounts;
}

void ReportRecord::addHeadings(Databases &dbs, std::vector<Account> &accounts) const
{
    if (m_call.kind == UserFieldsCall::Kind::Member) {
        // The member file is read through; each account finds its row by its number.
        ScopedDatabase scope(dbs, QStringLiteral("master.mdb"));
        QSqlQuery q =
            dbs.select(QStringLiteral("master.mdb"), QStringLiteral("select * from master"));
        const QSqlRecord shape = q.record();
        QHash<long long, QHash<QString, QString>> byNumber;
        while (q.next()) {
            const long long number =
                q.value(shape.indexOf(QStringLiteral("acctnumber"))).toLongLong();
            if (byNumber.contains(number))
                continue;
            QHash<QString, QString> heading;
            for (const QString &column : headingColumns())
                heading.insert(column, textOf(q, shape, column));
            byNumber.insert(number, heading);
        }
        q.finish();
        for (Account &account : accounts)
            account.heading = byNumber.value(account.acctid);
    } else if (m_call.kind == UserFieldsCall::Kind::Employee) {
        ScopedDatabase scope(dbs, QStringLiteral("emp.mdb"));
        for (Account &account : accounts) {
            QSqlQuery q = dbs.select(QStringLiteral("emp.mdb"),
                                     QStringLiteral("select * from empinfo where empid = ") +
                                         QString::number(account.acctid));
            const QSqlRecord shape = q.record();
            if (q.next())
                for (const QString &column : headingColumns())
                    account.heading.insert(column,
                                           textOf(q, shape, employeeColumns().value(column)));
            q.finish();
        }
    }
}

void ReportRecord::write(const QString &path, const std::vector<Account> &accounts) const
{
    QStringList columns = {QStringLiteral("acctid INTEGER"), QStringLiteral("fieldcount INTEGER")};
    for (const QString &column : headingColumns())
        columns << column + QStringLiteral(" TEXT");
    for (int i = 1; i <= fieldCount; ++i)
        columns << QStringLiteral("miscdesc%1 TEXT").arg(i);
    for (int i = 1; i <= fieldCount; ++i)
        columns << QStringLiteral("miscvalue%1 TEXT").arg(i);
    QStringList names;
    QStringList marks;
    for (const QString &column : columns) {
        names << column.section(QLatin1Char(' '), 0, 0);
        marks << QStringLiteral("?");
    }
    try {
        const Connection record = Connection::localFile(path);
        record.execute(QStringLiteral("drop table if exists ") + table());
        record.execute(QStringLiteral("create table %1 (%2)").arg(table(), columns.join(", ")));
        BulkTransaction transaction(record);
        QSqlQuery q(record.db());
        const QString insert = QStringLiteral("insert into %1 (%2) values (%3)")
                                   .arg(table(), names.join(", "), marks.join(", "));
        if (!q.prepare(insert))
            throw Databases::errorFrom(q.lastError(), insert);
        for (const Account &account : accounts) {
            q.addBindValue(account.acctid);
            q.addBindValue(static_cast<int>(m_chosen.size()));
            for (const QString &column : headingColumns())
                q.addBindValue(account.heading.value(column));
            for (std::size_t i = 0; i < fieldCount; ++i)
                q.addBindValue(i < m_chosen.size() ? m_descriptions.value(m_chosen[i]) : QString());
            for (std::size_t i = 0; i < fieldCount; ++i)
                q.addBindValue(i < m_chosen.size() ? account.values.value(m_chosen[i]) : QString());
            if (!q.exec())
                throw Databases::errorFrom(q.lastError());
        }
        q.finish();
        transaction.commit();
    } catch (const DbError &error) {
        throw DbError(DbError::Generic,
                      QStringLiteral("The report's record '%1' could not be written: %2")
                          .arg(path, error.text()));
    }
}
