#pragma once

#include "data/Connection.h"

#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <optional>

class QDir;
class QSqlDatabase;

namespace Demo {

// A database file of the data folder written from scratch: the file is created empty (an
// earlier SQLite file of that name is replaced; any other file is left alone and refused), opened
// the way the module opens it, given the module's tables, and set up for a fast bulk load.
// finish() makes it durable and closes it. Failures are thrown as Demo::Error.
class BulkFile {
public:
    BulkFile(const QDir &folder, const QString &fileName);
    ~BulkFile();
    BulkFile(const BulkFile &) = delete;
    BulkFile &operator=(const BulkFile &) = delete;

    // Whether a file of that path may be replaced: missing, empty or an SQLite database.
    static bool canReplace(const QString &path);

    QString fileName() const { return m_fileName; }
    QSqlDatabase database() const;

    void begin();
    void commit();
    void execute(const QString &statement);
    // Index upkeep costs more than the load itself: drop a table's indexes before a large load
    // and build them again afterwards.
    void dropIndexes(const QString &table);
    void createIndexes(const QString &table);
    void finish();

private:
    QString m_fileName;
    QString m_path;
    std::optional<Connection> m_connection;
    std::unique_ptr<BulkTransaction> m_transaction; // between begin() and commit()
};

// One prepared insert into a table, values bound by position.
class Insert {
public:
    Insert(const BulkFile &file, const QString &table, const QStringList &columns);
    Insert &operator<<(const QVariant &value)
    {
        m_query.bindValue(m_next++, value);
        return *this;
    }
    void exec();

private:
    QSqlQuery m_query;
    QString m_table;
    int m_next = 0;
};

// A text column's value: null text stays a null column.
inline QVariant textOrNull(const QString &text)
{
    return text.isNull() ? QVariant() : QVariant(text);
}

} // namespace Demo
