#pragma once

#include "ImportDestination.h"

#include "data/Connection.h"
#include "data/EngineSettings.h"
#include "data/PostgresDialect.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

// Writes each file as the schema of the same name ("ap.mdb" is ap_mdb) of the PostgreSQL
// database a data folder's database.ini names, with the module's column types for the module's
// own tables. Everything goes in one transaction on one connection: nothing is there for anyone
// else until commit(), and a destination dropped before that leaves the database as it was.
class PostgresDestination : public ImportDestination {
public:
    explicit PostgresDestination(const EngineSettings &settings);
    ~PostgresDestination() override;

    // Connects and opens the transaction; refuses a database that already holds any of the
    // files (the same check is made again by the schemas' own creation).
    void start(const QStringList &fileNames);
    void beginFile(const QString &fileName) override;
    void beginTable(const TablePlan &plan) override;
    void insert(const QVariantList &values) override;
    void endTable() override;
    qint64 rowCount() override;
    qint64 moneyTotal(const QString &column) override;
    void endFile() override;
    // Makes everything written visible at once.
    void commit();

    // Where the database is, as messages name it.
    QString place() const;
    // The server's type of a column the module does not know, nearest to its Access type.
    static QString keptType(unsigned char accessType);

private:
    void run(const QString &statement);
    QString identifier(const QString &name) const;
    void close();

    EngineSettings m_settings;
    PostgresDialect m_dialect;
    std::optional<Connection> m_connection;
    QString m_fileName;
    QString m_table;
    QSqlQuery m_insert;
    // The whole import is one transaction: a failure leaves the database without the company.
    std::unique_ptr<BulkTransaction> m_transaction;
};
