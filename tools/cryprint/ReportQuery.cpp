#include "ReportQuery.h"

#include "LocalTableCopy.h"
#include "ReportFailure.h"
#include "SelectionFormula.h"

#include "common/DataFiles.h"
#include "data/Connection.h"
#include "data/DbError.h"
#include "data/Dialect.h"
#include "data/EngineSettings.h"
#include "data/PostgresDialect.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace {

QString key(const QString &table, const QString &field)
{
    return table.toLower() + QLatin1Char('.') + field.toLower();
}

QString quoted(const QString &name)
{
    return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

} // namespace

ReportQuery::ReportQuery() = default;

ReportQuery::~ReportQuery()
{
    m_query.reset(); // before its connection goes
}

void ReportQuery::attachServer(const ReportDefinition &def, const RunnerRequest &request,
                               const EngineSettings &settings)
{
    const PostgresDialect dialect(settings);
    try {
        m_connection =
            std::make_unique<Connection>(Connection::serverReader(settings, def.tables[0].file));
    } catch (const DbError &e) {
        ReportFailure::raise(QStringLiteral("The company's database cannot be opened: ") +
                             e.text());
    }
    QSqlDatabase db = m_connection->db();
    for (const auto &table : def.tables) {
        const QString given = request.dataFiles[size_t(table.index)];
        QString schema;
        if (!given.isEmpty() && QFileInfo(given).isFile()) {
            // A file on this computer (the module's record for the user-defined fields).
            LocalTableCopy::copy(*m_connection, given, table.name);
            schema = QStringLiteral("pg_temp");
        } else {
            // Each of the company's files is a schema of its database; a bare file name names
            // one, a path that leads nowhere is missing as on the files.
            const QString file = given.isEmpty() ? table.file : given;
            if (file.contains(QLatin1Char('/')) || !dialect.existsThrough(db, file)) {
                ReportFailure::raise(
                    given.isEmpty()
                        ? QStringLiteral("The data file %1 for table %2 cannot be found in %3.")
                              .arg(file, table.name, dialect.placeOf(file))
                        : QStringLiteral("The data file %1 given as DataFiles(%2) for table "
                                         "%3 cannot be found.")
                              .arg(given)
                              .arg(table.index)
                              .arg(table.name));
            }
            schema = PostgresDialect::schemaOf(file);
        }
        QSqlQuery columns(db);
        columns.prepare(QStringLiteral("select attname from pg_attribute where attrelid = "
                                       "to_regclass(?) and attnum > 0 and not attisdropped"));
        columns.addBindValue(schema + QLatin1Char('.') + quoted(table.name.toLower()));
        if (!columns.exec()) {
            ReportFailure::raise(
                QStringLiteral("The data file %1 cannot be read: %2")
                    .arg(given.isEmpty() ? table.file : given, columns.lastError().text()));
        }
        QHash<QString, QString> names;
        while (columns.next())
            names.insert(columns.value(0).toString().toLower(), columns.value(0).toString());
        if (names.isEmpty()) {
            ReportFailure::raise(QStringLiteral("The data file %1 has no table %2.")
                                     .arg(given.isEmpty() ? table.file : given, table.name));
        }
        m_schemaOf.insert(table.name.toLower(), schema);
        m_names.insert(table.name.toLower(), names);
    }
    if (dialect.existsThrough(db, QStringLiteral("config.mdb")))
        readCompany(db, PostgresDialect::schemaOf(QStringLiteral("config.mdb")) +
                            QStringLiteral(".company"));
    // One snapshot for the first rows and the rest, so that both statements see the same rows.
    QSqlQuery begin(db);
    if (!begin.exec(
            QStringLiteral("begin transaction isolation level repeatable read read only"))) {
        ReportFailure::raise(QStringLiteral("The company's database cannot be read: ") +
                             begin.lastError().text());
    }
}

void ReportQuery::attach(const ReportDefinition &def, const RunnerRequest &request)
{
    m_dialect = Dialect::forDataFolder();
    if (const std::optional<EngineSettings> settings = EngineSettings::ofDataFolder()) {
        attachServer(def, request, *settings);
        return;
    }
    try {
        m_connection = std::make_unique<Connection>(Connection::scratch());
    } catch (const DbError &e) {
        ReportFailure::raise(QStringLiteral("The database engine cannot start: ") + e.text());
    }
    QSqlDatabase db = m_connection->db();
    QHash<QString, QString> schemaOfPath;
    for (const auto &table : def.tables) {
        const QString given = request.dataFiles[size_t(table.index)];
        const QString file = given.isEmpty() ? table.file : given;
        const QFileInfo info(file);
        if (!info.isFile()) {
            ReportFailure::raise(
                given.isEmpty()
                    ? QStringLiteral("The data file %1 for table %2 cannot be found in %3.")
                          .arg(file, table.name, QDir::currentPath())
                    : QStringLiteral("The data file %1 given as DataFiles(%2) for table %3 "
                                     "cannot be found.")
                          .arg(file)
                          .arg(table.index)
                          .arg(table.name));
        }
        const QString path = info.absoluteFilePath();
        QString schema = schemaOfPath.value(path);
        if (schema.isEmpty()) {
            schema = QStringLiteral("d%1").arg(schemaOfPath.size());
            // Read-only: a report never changes the company's files.
            const QString uri = QStringLiteral("file:%1?mode=ro")
                                    .arg(QString::fromLatin1(QUrl::toPercentEncoding(path, "/")));
            QSqlQuery attach(db);
            attach.prepare(QStringLiteral("ATTACH DATABASE ? AS ") + schema);
            attach.addBindValue(uri);
            if (!attach.exec()) {
                ReportFailure::raise(QStringLiteral("The data file %1 cannot be opened: %2")
                                         .arg(file, attach.lastError().text()));
            }
            schemaOfPath.insert(path, schema);
        }
        QSqlQuery columns(db);
        if (!columns.exec(
                QStringLiteral("PRAGMA %1.table_info(%2)").arg(schema, quoted(table.name)))) {
            ReportFailure::raise(QStringLiteral("The data file %1 cannot be read: %2")
                                     .arg(file, columns.lastError().text()));
        }
        QHash<QString, QString> names;
        while (columns.next())
            names.insert(columns.value(1).toString().toLower(), columns.value(1).toString());
        if (names.isEmpty()) {
            ReportFailure::raise(
                QStringLiteral("The data file %1 has no table %2.").arg(file, table.name));
        }
        m_schemaOf.insert(table.name.toLower(), schema);
        m_names.insert(table.name.toLower(), names);
    }
    const QFileInfo config(DataFiles::pathOf(QStringLiteral("config.mdb")));
    if (config.isFile()) {
        QSqlQuery attach(db);
        attach.prepare(QStringLiteral("ATTACH DATABASE ? AS settings"));
        attach.addBindValue(
            QStringLiteral("file:%1?mode=ro")
                .arg(QString::fromLatin1(QUrl::toPercentEncoding(config.absoluteFilePath(), "/"))));
        if (attach.exec())
            readCompany(db, QStringLiteral("settings.company"));
    }
    // Rows read twice (counted, then printed) come from one snapshot of the files, as on a
    // server.
    if (m_stableOrder) {
        QSqlQuery begin(db);
        if (!begin.exec(QStringLiteral("BEGIN")))
            ReportFailure::raise(QStringLiteral("The company's files cannot be read: ") +
                                 begin.lastError().text());
    }
}

void ReportQuery::readCompany(QSqlDatabase &db, const QString &table)
{
    // A missing table or row is no error: the heading says there is no company record.
    QSqlQuery company(db);
    if (company.exec(QStringLiteral("select compname from %1 limit 1").arg(table)) &&
        company.next())
        m_company = company.value(0).toString().trimmed();
}

FieldResolver ReportQuery::resolver() const
{
    return [this](const QString &table, const QString &field) {
        const auto t = m_names.constFind(table.toLower());
        if (t == m_names.constEnd())
            return FieldAnswer{{},
                               QStringLiteral("there is no table %1 in this report").arg(table)};
        const auto f = t->constFind(field.toLower());
        if (f == t->constEnd())
            return FieldAnswer{{}, QStringLiteral("table %1 has no field %2").arg(table, field)};
        return FieldAnswer{quoted(table.toLower()) + QLatin1Char('.') + quoted(*f), {}};
    };
}

QStringList ReportQuery::selectList(const ReportDefinition &def, const FieldResolver &resolve)
{
    QStringList select;
    for (const auto &field : def.fields()) {
        const FieldAnswer answer = resolve(field.table, field.column);
        if (!answer.error.isEmpty())
            ReportFailure::raise(QStringLiteral("The report definition names {%1.%2}: %3.")
                                     .arg(field.table, field.column, answer.error));
        m_columns.insert(key(field.table, field.column), int(select.size()));
        select << answer.sql;
    }
    return select;
}

QString ReportQuery::fromClause(const ReportDefinition &def, const FieldResolver &resolve) const
{
    // The server's tables are named in lower case.
    const auto tableName = [this](const QString &name) {
        return quoted(onServer() ? name.toLower() : name);
    };
    QString from = m_schemaOf.value(def.tables[0].name.toLower()) + QLatin1Char('.') +
                   tableName(def.tables[0].name) + QStringLiteral(" AS ") +
                   quoted(def.tables[0].name.toLower());
    for (size_t i = 1; i < def.tables.size(); ++i) {
        const auto &join = def.joins[i - 1];
        const FieldAnswer left = resolve(join.left.table, join.left.column);
        const FieldAnswer right = resolve(join.right.table, join.right.column);
        if (!left.error.isEmpty() || !right.error.isEmpty())
            ReportFailure::raise(QStringLiteral("The report definition's join %1: %2.")
                                     .arg(i)
                                     .arg(left.error.isEmpty() ? right.error : left.error));
        const auto &table = def.tables[i];
        from += QStringLiteral(" LEFT JOIN %1.%2 AS %3 ON %4 = %5")
                    .arg(m_schemaOf.value(table.name.toLower()), tableName(table.name),
                         quoted(table.name.toLower()), left.sql, right.sql);
    }
    return from;
}

QStringList ReportQuery::conditions(const ReportDefinition &def, const RunnerRequest &request,
                                    const FieldResolver &resolve)
{
    QStringList where;
    for (const bool fromDefinition : {true, false}) {
        const QString &formula = fromDefinition ? def.filter : request.selectionFormula;
        if (formula.trimmed().isEmpty())
            continue;
        try {
            const SqlCondition condition = SelectionFormula::parse(formula, resolve);
            where << condition.sql;
            m_values << condition.values;
        } catch (const NumberedError &e) {
            if (!fromDefinition)
                throw;
            ReportFailure::raise(QStringLiteral("The report definition's filter: ") + e.text());
        }
    }
    return where;
}

QStringList ReportQuery::orderTerms(const ReportDefinition &def, const RunnerRequest &request,
                                    const FieldResolver &resolve) const
{
    QStringList order;
    if (def.group)
        order << resolve(def.group->table, def.group->column).sql + QStringLiteral(" ASC");
    QStringList sorts;
    for (const QString &sort : request.sortFields)
        if (!sort.isEmpty())
            sorts << sort;
    if (sorts.isEmpty())
        sorts = def.order;
    for (const QString &sort : sorts)
        order << SelectionFormula::sortField(sort, resolve);
    // Nulls where the files put them, whatever the engine.
    for (QString &term : order)
        term = m_dialect->orderTerm(term);
    if (m_quickRows > 0 || m_stableOrder)
        order << quoted(def.tables[0].name.toLower()) + QLatin1Char('.') + m_dialect->rowIdColumn();
    return order;
}

void ReportQuery::open(const ReportDefinition &def, const RunnerRequest &request)
{
    attach(def, request);
    const FieldResolver resolve = resolver();
    m_values.clear();
    m_statement = QStringLiteral("SELECT ") + selectList(def, resolve).join(QStringLiteral(", ")) +
                  QStringLiteral(" FROM ") + fromClause(def, resolve);
    const QStringList where = conditions(def, request, resolve);
    if (!where.isEmpty())
        m_statement += QStringLiteral(" WHERE ") + where.join(QStringLiteral(" AND "));
    const QStringList order = orderTerms(def, request, resolve);
    if (!order.isEmpty())
        m_statement += QStringLiteral(" ORDER BY ") + order.join(QStringLiteral(", "));
    m_quick = m_quickRows > 0;
    if (!run(m_quick ? m_statement + QStringLiteral(" LIMIT %1").arg(m_quickRows) : m_statement)) {
        const QString error = m_error;
        m_error.clear();
        ReportFailure::raise(error);
    }
}

bool ReportQuery::run(const QString &statement)
{
    m_query = std::make_unique<QSqlQuery>(m_connection->db());
    m_query->setForwardOnly(true);
    if (!m_query->prepare(statement)) {
        m_error = QStringLiteral("The report's statement cannot be prepared: ") +
                  m_query->lastError().text();
        return false;
    }
    for (const QVariant &v : std::as_const(m_values))
        m_query->addBindValue(v);
    if (!m_query->exec()) {
        m_error =
            QStringLiteral("The report's rows cannot be read: ") + m_query->lastError().text();
        return false;
    }
    return true;
}

bool ReportQuery::next()
{
    if (!m_query)
        return false;
    if (m_query->next()) {
        ++m_read;
        return true;
    }
    if (!m_query->lastError().isValid() && quickRowsUsedUp()) {
        // The limited statement gave all it may: the rest come from the whole one.
        m_quick = false;
        const QString rest =
            onServer() ? QStringLiteral(" OFFSET %1") : QStringLiteral(" LIMIT -1 OFFSET %1");
        if (!run(m_statement + rest.arg(m_read))) {
            m_query.reset();
            return false;
        }
        return next();
    }
    if (m_query->lastError().isValid())
        m_error =
            QStringLiteral("Reading the report's rows failed: ") + m_query->lastError().text();
    return false;
}

int ReportQuery::positionOf(const ReportDefinition::Field &field) const
{
    return m_columns.value(key(field.table, field.column), -1);
}

QVariant ReportQuery::value(const ReportDefinition::Field &field) const
{
    return value(positionOf(field));
}

bool ReportQuery::restartAt(long long row)
{
    m_query.reset();
    m_error.clear();
    m_read = std::max(0LL, row);
    m_quick = m_quickRows > m_read;
    QString statement = m_statement;
    if (m_quick)
        statement += QStringLiteral(" LIMIT %1 OFFSET %2").arg(m_quickRows - m_read).arg(m_read);
    else if (m_read > 0)
        statement +=
            (onServer() ? QStringLiteral(" OFFSET %1") : QStringLiteral(" LIMIT -1 OFFSET %1"))
                .arg(m_read);
    if (!run(statement)) {
        m_query.reset();
        return false;
    }
    return true;
}

bool ReportQuery::onServer() const
{
    return m_connection && m_connection->onServer();
}
