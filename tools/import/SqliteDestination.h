#pragma once

#include "ImportDestination.h"

#include "data/Connection.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

#include <memory>
#include <optional>

// Writes each file as an SQLite database of the same name into a work folder, with the
// module's schema for the module's own files; the caller moves the finished files into place.
class SqliteDestination : public ImportDestination {
public:
    explicit SqliteDestination(QString folder) : m_folder(std::move(folder)) {}
    ~SqliteDestination() override;

    void beginFile(const QString &fileName) override;
    void beginTable(const TablePlan &plan) override;
    void insert(const QVariantList &values) override;
    void endTable() override;
    qint64 rowCount() override;
    qint64 moneyTotal(const QString &column) override;
    void endFile() override;

private:
    void run(const QString &statement);
    QSqlDatabase db() const;
    void close();

    QString m_folder;
    QString m_fileName;
    std::optional<Connection> m_connection;
    // A table's rows go in as one transaction.
    std::unique_ptr<BulkTransaction> m_transaction;
    QString m_table;
    QSqlQuery m_insert;
};
