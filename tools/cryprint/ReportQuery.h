#pragma once

#include "ReportDefinition.h"
#include "RunnerRequest.h"
#include "SelectionFormula.h"

#include <QHash>
#include <QSqlQuery>
#include <QString>

#include <memory>
#include <optional>

class Connection;
class Dialect;
struct EngineSettings;

// The rows of one report: the definition's tables in their files (or the files the request
// names; on a server, their schemas), opened read-only, with the request's selection formula and
// sort fields. The rows are read forward as they are printed, never held all at once.
class ReportQuery {
public:
    ReportQuery();
    ~ReportQuery();
    ReportQuery(const ReportQuery &) = delete;
    ReportQuery &operator=(const ReportQuery &) = delete;

    // Before open: read the first rows through a statement limited to that many, which the
    // engine answers without sorting every row; the rows after them come from the whole
    // statement, run only when they are asked for. Ties are broken by the main table's row
    // number, so both statements give the rows in one order.
    void setQuickStart(long long rows) { m_quickRows = rows; }
    // Before open: ties broken by the main table's row number even without a quick start, and
    // on the files one read transaction for every statement (the server's session has one
    // anyway), so that reading the rows again gives the same rows in the same order.
    void setStableOrder() { m_stableOrder = true; }
    // Whether the next row needs the whole statement run (and its rows sorted) first.
    bool quickRowsUsedUp() const { return m_quick && m_read == m_quickRows; }
    // Opens the files, builds and runs the statement; a NumberedError (ReportFailure, or the
    // data layer's) says what failed.
    void open(const ReportDefinition &def, const RunnerRequest &request);
    // The next row; false at the end (error() says whether the engine failed).
    bool next();
    QString error() const { return m_error; }
    // The value of a field of the definition in the current row (for tests and the odd value;
    // the row loops take values by position).
    QVariant value(const ReportDefinition::Field &field) const;
    // Where a field of the definition stands in the rows, -1 when the report does not show it;
    // found once, before the rows are read.
    int positionOf(const ReportDefinition::Field &field) const;
    // The value at a position of the current row; null for -1.
    QVariant value(int position) const
    {
        return position < 0 ? QVariant() : m_query->value(position);
    }
    // The rows read so far.
    long long rowsRead() const { return m_read; }
    // Reads the rows again from row `row` (0 for the first), through the same connection (on a
    // server, in the same snapshot); the first rows through the limited statement again where
    // the row is among them. False with error() set when the engine fails.
    bool restartAt(long long row);
    // The company's name from its settings file (config.mdb), read when the files are opened;
    // empty when the company has no company record.
    QString companyName() const { return m_company; }
    // The statement as run (for tests: no formula text in it).
    QString statement() const { return m_statement; }

private:
    bool run(const QString &statement);
    // Whether the company is on a PostgreSQL server.
    bool onServer() const;
    // The steps of open: the files, the statement's parts.
    void attach(const ReportDefinition &def, const RunnerRequest &request);
    // The same on a data folder whose company is on a PostgreSQL server: one read-only
    // connection, each file a schema.
    void attachServer(const ReportDefinition &def, const RunnerRequest &request,
                      const EngineSettings &settings);
    FieldResolver resolver() const;
    // The fields the report shows (each found at its position from then on).
    QStringList selectList(const ReportDefinition &def, const FieldResolver &resolve);
    QString fromClause(const ReportDefinition &def, const FieldResolver &resolve) const;
    // The definition's filter and the request's formula, their values bound.
    QStringList conditions(const ReportDefinition &def, const RunnerRequest &request,
                           const FieldResolver &resolve);
    // The group, the sort fields (the request's, else the definition's) and the tie-breaker.
    QStringList orderTerms(const ReportDefinition &def, const RunnerRequest &request,
                           const FieldResolver &resolve) const;
    void readCompany(QSqlDatabase &db, const QString &table);
    QString m_company;
    std::unique_ptr<Connection> m_connection;
    std::unique_ptr<Dialect> m_dialect;
    std::unique_ptr<QSqlQuery> m_query;
    QHash<QString, int> m_columns;                   // "table.field" (lower case) -> position
    QHash<QString, QString> m_schemaOf;              // table (lower case) -> attached schema
    QHash<QString, QHash<QString, QString>> m_names; // table -> field (lower) -> real name
    QString m_statement;
    QString m_error;
    QVariantList m_values;
    long long m_quickRows = 0;
    bool m_quick = false; // the limited statement is being read
    bool m_stableOrder = false;
    long long m_read = 0;
};
