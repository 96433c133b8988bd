#include "data/PostgresDialect.h"

#include "data/Databases.h"
#include "data/DbError.h"
#include "data/StatementClauses.h"

#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>

namespace {

int s_probes = 0;

// Every schema change of the module takes this lock first, so that two copies making the same
// tables take turns.
const char *schemaLock = "select pg_advisory_xact_lock(7411020)";

void dropConnection(QSqlDatabase &db, const QString &connection)
{
    db.close();
    db = QSqlDatabase();
    QSqlDatabase::removeDatabase(connection);
}

// A connection of its own for one question, closed when the scope ends.
class Probe {
public:
    Probe() : m_name(QStringLiteral("apdb-probe-%1").arg(++s_probes)) {}
    ~Probe()
    {
        if (m_db.isValid())
            dropConnection(m_db, m_name);
    }
    Probe(const Probe &) = delete;
    Probe &operator=(const Probe &) = delete;
    const QString &name() const { return m_name; }
    QSqlDatabase &db() { return m_db; }

private:
    QString m_name;
    QSqlDatabase m_db;
};

// The end of the order term that starts at `from`: a comma or a limit clause at the top
// level, or the end of the statement.
qsizetype orderTermEnd(const QString &sql, qsizetype from, bool &last)
{
    int depth = 0;
    QChar quote;
    for (qsizetype i = from; i < sql.size(); ++i) {
        const QChar c = sql.at(i);
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
            continue;
        }
        if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            quote = c;
        } else if (c == QLatin1Char('(')) {
            ++depth;
        } else if (c == QLatin1Char(')')) {
            --depth;
        } else if (depth == 0 && c == QLatin1Char(',')) {
            last = false;
            return i;
        } else if (depth == 0 && c.isSpace()) {
            static const QRegularExpression tail(QStringLiteral(R"(^\s+(limit|offset|for)\b)"),
                                                 QRegularExpression::CaseInsensitiveOption);
            if (tail.match(sql.mid(i)).hasMatch()) {
                last = true;
                return i;
            }
        }
    }
    last = true;
    return sql.size();
}

// One order term with the files' place for nulls, unless it names a place of its own.
QString withNullsAsOnTheFiles(const QString &term)
{
    static const QRegularExpression descending(QStringLiteral(R"(\sdesc$)"),
                                               QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression nulls(QStringLiteral(R"(\snulls\s+(first|last)$)"),
                                          QRegularExpression::CaseInsensitiveOption);
    if (nulls.match(term).hasMatch())
        return term;
    return term + (descending.match(term).hasMatch() ? QStringLiteral(" nulls last")
                                                     : QStringLiteral(" nulls first"));
}

// Each term of the statement's own order clause gets the files' place for nulls.
QString withOrderNullsAsOnTheFiles(const QString &statement)
{
    const QString sql = bareStatement(statement);
    const StatementClauses at = StatementClauses::of(sql);
    if (at.order < 0)
        return statement;
    static const QRegularExpression orderBy(QStringLiteral(R"(^order\s+by\s+)"),
                                            QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = orderBy.match(sql.mid(at.order));
    if (!m.hasMatch())
        return statement;
    QString mapped = sql.left(at.order + m.capturedLength());
    qsizetype start = mapped.size();
    bool last = false;
    while (!last) {
        const qsizetype end = orderTermEnd(sql, start, last);
        const QString term = sql.mid(start, end - start).trimmed();
        mapped += withNullsAsOnTheFiles(term);
        if (!last) {
            mapped += QStringLiteral(", ");
            start = end + 1;
        } else {
            mapped += sql.mid(end);
        }
    }
    return mapped;
}

} // namespace

PostgresDialect::PostgresDialect(EngineSettings settings) : m_settings(std::move(settings)) {}

QString PostgresDialect::map(const QString &statement) const
{
    return withOrderNullsAsOnTheFiles(mapDesktopStatement(statement));
}

QString PostgresDialect::indexColumns(const QString &columns) const
{
    QStringList made;
    for (const QString &column : columns.split(QLatin1Char(',')))
        made << column.trimmed() + QStringLiteral(" nulls first");
    return made.join(QStringLiteral(", "));
}

QString PostgresDialect::withFixedTies(const QString &statement) const
{
    const QString sql = bareStatement(statement);
    const StatementClauses at = StatementClauses::of(sql);
    if (at.order < 0 || at.from < 0 || at.other)
        return statement;
    const qsizetype fromEnd = at.where >= 0 ? at.where : at.order;
    // Only a statement of one table: with a join, which table's row id settles is unclear.
    static const QRegularExpression oneTable(
        QStringLiteral(R"(^from\s+([a-z_]\w*)(?:\s+(?:as\s+)?([a-z_]\w*))?\s*$)"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = oneTable.match(sql.mid(at.from, fromEnd - at.from));
    if (!m.hasMatch())
        return statement;
    const QString alias = m.captured(2);
    static const QStringList joinWords{QStringLiteral("join"), QStringLiteral("natural"),
                                       QStringLiteral("cross"), QStringLiteral("inner"),
                                       QStringLiteral("left")};
    if (joinWords.contains(alias, Qt::CaseInsensitive))
        return statement;
    return sql + QStringLiteral(", ") + (alias.isEmpty() ? m.captured(1) : alias) +
           QStringLiteral(".ctid");
}

QString PostgresDialect::schemaOf(const QString &fileName)
{
    QString schema = fileName.toLower();
    schema.replace(QLatin1Char('.'), QLatin1Char('_'));
    return schema;
}

QString PostgresDialect::placeOf(const QString &fileName) const
{
    return QStringLiteral("%1 (schema %2 of the database %3 on %4)")
        .arg(fileName, schemaOf(fileName), m_settings.database, m_settings.host);
}

// Throws the server's own reason when it refuses.
QSqlDatabase PostgresDialect::login(const QString &connection, const QString &program) const
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), connection);
    db.setHostName(m_settings.host);
    db.setPort(m_settings.port);
    db.setDatabaseName(m_settings.database);
    if (!m_settings.user.isEmpty())
        db.setUserName(m_settings.user);
    db.setConnectOptions(QStringLiteral("connect_timeout=5;application_name=") + program);
    if (!db.open()) {
        const QString why = db.lastError().text().trimmed();
        dropConnection(db, connection);
        throw DbError(DbError::FileNotFound, why);
    }
    return db;
}

QSqlDatabase PostgresDialect::openDatabase(const QString &connection, const QString &program) const
{
    if (!m_settings.error.isEmpty())
        throw DbError(DbError::FileNotFound, m_settings.error);
    QSqlDatabase db;
    try {
        db = login(connection, program);
    } catch (const DbError &refused) {
        throw DbError(refused.code(),
                      QStringLiteral("The database server refused the connection to the "
                                     "database %1 on %2: %3")
                          .arg(m_settings.database, m_settings.host, refused.text()));
    }
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("set client_min_messages = warning")) ||
        !q.exec(QStringLiteral("set lock_timeout = %1").arg(Dialect::busyTimeoutMsecs))) {
        const DbError error = Databases::errorFrom(q.lastError());
        q = QSqlQuery();
        dropConnection(db, connection);
        throw error;
    }
    return db;
}

QSqlDatabase PostgresDialect::open(const QString &fileName, const QString &connection,
                                   int busyMsecs) const
{
    if (!m_settings.error.isEmpty())
        throw DbError(DbError::FileNotFound, m_settings.error);
    static const QRegularExpression plainName(QStringLiteral("^[a-z_][a-z0-9_]*$"));
    if (!plainName.match(schemaOf(fileName)).hasMatch())
        throw DbError(DbError::FileNotFound,
                      QStringLiteral("Could not find file '%1'.").arg(fileName));
    QSqlDatabase db;
    try {
        db = login(connection, QStringLiteral("apmaster"));
    } catch (const DbError &refused) {
        throw DbError(refused.code(),
                      QStringLiteral("Could not open file '%1': the database server refused "
                                     "the connection. %2")
                          .arg(placeOf(fileName), refused.text()));
    }
    QSqlQuery q(db);
    const bool set =
        q.exec(QStringLiteral("set search_path to %1, public").arg(schemaOf(fileName))) &&
        q.exec(QStringLiteral("set client_min_messages = warning")) &&
        q.exec(QStringLiteral("set lock_timeout = %1").arg(busyMsecs));
    if (!set) {
        const DbError error = Databases::errorFrom(q.lastError());
        q = QSqlQuery();
        dropConnection(db, connection);
        throw error;
    }
    return db;
}

QSqlDatabase PostgresDialect::openForReading(const QString &fileName,
                                             const QString &connection) const
{
    QSqlDatabase db = open(fileName, connection, Dialect::busyTimeoutMsecs);
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("set session characteristics as transaction read only"))) {
        const DbError error = Databases::errorFrom(q.lastError());
        q = QSqlQuery();
        dropConnection(db, connection);
        throw error;
    }
    return db;
}

bool PostgresDialect::schemaExists(QSqlDatabase &db, const QString &fileName) const
{
    QSqlQuery q(db);
    q.prepare(QStringLiteral("select 1 from pg_namespace where nspname = ?"));
    q.addBindValue(schemaOf(fileName));
    if (!q.exec())
        throw Databases::errorFrom(q.lastError());
    return q.next();
}

bool PostgresDialect::existsThrough(QSqlDatabase &db, const QString &fileName) const
{
    try {
        return schemaExists(db, fileName);
    } catch (const DbError &) {
        return exists(fileName);
    }
}

bool PostgresDialect::exists(const QString &fileName) const
{
    Probe probe;
    try {
        probe.db() = open(fileName, probe.name(), Dialect::busyTimeoutMsecs);
        return schemaExists(probe.db(), fileName);
    } catch (const DbError &) {
        return false;
    }
}

QSqlDatabase PostgresDialect::connect(const QString &fileName, const QString &connection,
                                      int busyMsecs, bool first) const
{
    QSqlDatabase db = open(fileName, connection, busyMsecs);
    QString schemaError;
    try {
        if (!schemaExists(db, fileName)) {
            dropConnection(db, connection);
            throw DbError(DbError::FileNotFound,
                          QStringLiteral("Could not find file '%1'.").arg(placeOf(fileName)));
        }
        // Tables, columns and indexes are checked once per schema, on its first connection.
        if (first)
            schemaError = Schema::ensure(db, fileName, *this);
    } catch (const DbError &) {
        if (db.isValid())
            dropConnection(db, connection);
        throw;
    }
    if (!schemaError.isEmpty()) {
        dropConnection(db, connection);
        throw DbError(DbError::NotADatabase,
                      QStringLiteral("The file '%1' could not be prepared: %2")
                          .arg(placeOf(fileName), schemaError));
    }
    return db;
}

void PostgresDialect::create(const QString &fileName) const
{
    Probe probe;
    probe.db() = open(fileName, probe.name(), 30000);
    if (schemaExists(probe.db(), fileName))
        throw DbError(DbError::Generic,
                      QStringLiteral("The file '%1' is already there; it was left as it is.")
                          .arg(placeOf(fileName)));
    const QString error = Schema::ensure(probe.db(), fileName, *this);
    if (!error.isEmpty())
        throw DbError(
            DbError::Generic,
            QStringLiteral("Could not create the file '%1': %2").arg(placeOf(fileName), error));
}

QStringList PostgresDialect::beginWrite(bool light, int waitMsecs, int) const
{
    QStringList statements{QStringLiteral("begin")};
    if (waitMsecs >= 0)
        statements << QStringLiteral("set local lock_timeout = %1").arg(waitMsecs);
    // Still atomic; only the very last such commits can be lost by a crash of the server.
    if (light)
        statements << QStringLiteral("set local synchronous_commit = off");
    // One text, run unprepared, is one round trip to the server instead of one a statement.
    return {statements.join(QStringLiteral("; "))};
}

QString PostgresDialect::lockRow(const QString &table, const QString &keyColumn) const
{
    return QStringLiteral("select %2 from %1 where %2 = ? for update").arg(table, keyColumn);
}

QString PostgresDialect::writtenOnItsOwn(const QString &statement, bool light) const
{
    if (!light)
        return statement;
    // The setting holds for the statement's own transaction, whose commit reads it; the server
    // evaluates it for every row the statement writes (it is never a constant), and a statement
    // that writes no row has nothing to commit.
    return statement +
           QStringLiteral(" and set_config('synchronous_commit', 'off', true) is not null");
}

QString PostgresDialect::columnType(Schema::Kind kind) const
{
    using K = Schema::Kind;
    switch (kind) {
    case K::Long:
    case K::Date:
        return QStringLiteral("bigint");
    case K::Number:
        return QStringLiteral("double precision");
    case K::Text:
        return QStringLiteral("citext");
    case K::Memo:
        return QStringLiteral("text");
    case K::Currency:
        return QStringLiteral("numeric(19,4)");
    }
    return QStringLiteral("text");
}

QStringList PostgresDialect::indexNames(QSqlDatabase &db) const
{
    QSqlQuery q(db);
    q.setForwardOnly(true);
    QStringList names;
    if (!q.exec(QStringLiteral("select indexname from pg_indexes where schemaname = "
                               "current_schema()")))
        return names;
    while (q.next())
        names << q.value(0).toString();
    return names;
}

QStringList PostgresDialect::beginSchemaChange(const QString &fileName) const
{
    // The schema and the citext type are made in the same transaction as the tables.
    return {QStringLiteral("begin"), QLatin1String(schemaLock),
            QStringLiteral("create extension if not exists citext schema public"),
            QStringLiteral("create schema if not exists %1").arg(schemaOf(fileName))};
}

QString PostgresDialect::orderTerm(const QString &term) const
{
    return withNullsAsOnTheFiles(term.trimmed());
}
