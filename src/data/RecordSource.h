#pragma once

#include <QSet>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>
#include <QVariant>

#include <vector>

class Databases;

// Told before and after a record source replaces its rows (a refresh, a delete), so that a view
// showing them can start again.
class RecordSourceObserver {
public:
    virtual ~RecordSourceObserver() = default;
    virtual void rowsAboutToReset() = 0;
    virtual void rowsReset() = 0;
    // The source is being destroyed; its rows must not be read any more.
    virtual void sourceDestroyed() = 0;
};

// A bound record source: a database file and a statement set at run time, and a cursor over
// the statement's rows in its order. Rows are fetched one at a time as the cursor reaches them
// (through a connection of the source's own), so a statement over a large table shows its first
// row without reading the rest. The current record can be edited and written back by its key.
class RecordSource {
public:
    RecordSource(Databases &dbs, const QString &name);
    ~RecordSource();
    RecordSource(const RecordSource &) = delete;
    RecordSource &operator=(const RecordSource &) = delete;

    QString name() const { return m_name; }
    void setDatabaseName(const QString &fileName);
    QString databaseName() const { return m_fileName; }
    // A statement, or a bare table name for all of the table's rows.
    void setRecordSource(const QString &statement);
    QString recordSource() const { return m_statement; }
    // The table that edits, new records and deletes go to, and the column that identifies a row.
    void setUpdateTable(const QString &table, const QString &keyColumn);

    // Runs the statement again and stands on its first row. With no database name or no
    // statement the source lets go of its file.
    void refresh();
    bool isBound() const { return m_bound; }

    bool bof() const;
    bool eof() const;
    bool hasRecords() const;
    // Moves; moving when already past an end is the engine's "no current record" error.
    void moveFirst();
    void moveNext();
    void movePrevious();

    // The current row; throws DbError 3021 when there is none.
    const QSqlRecord &current() const;
    QVariant value(const QString &column) const;
    // The number of rows fetched so far (never more than the cursor has reached, plus one,
    // unless fetchMore() read ahead).
    int fetchedCount() const { return static_cast<int>(m_rows.size()); }
    // Reads up to `count` further rows without moving the cursor; returns how many came.
    int fetchMore(int count);
    // True once the statement has no rows left to read (or nothing is bound).
    bool allFetched() const { return m_exhausted; }
    // A fetched row by its position (0 to fetchedCount() - 1), without moving the cursor.
    const QSqlRecord &rowAt(int index) const;
    // One observer at most; nullptr removes it.
    void setObserver(RecordSourceObserver *observer) { m_observer = observer; }

    // Searches the statement's rows from the first for the first one matching an SQL criterion;
    // a match becomes the current record. Returns false (current record unchanged) when none does.
    bool findFirst(const QString &criterion);

    // A light commit does not wait for the disk (still atomic and consistent; only the very last
    // such writes can be lost by a power cut): for values that are recomputed anyway.
    enum class Commit { Durable, Light };
    // Edit and AddNew take the file's write lock until update() or cancelUpdate().
    void edit(Commit commit = Commit::Durable);
    void addNew(Commit commit = Commit::Durable);
    void setValue(const QString &column, const QVariant &value);
    void update();
    void cancelUpdate();
    bool isEditing() const { return m_mode != Mode::None; }
    void deleteCurrent();
    // The current row as the database holds it now (empty when it is gone), read by its key.
    QSqlRecord reread() const;

private:
    enum class Mode { None, Edit, Add };
    bool fetchOne();
    void beginWrite(Commit commit);
    void endWrite(bool commit);
    QString fullStatement() const;
    // Ends the statement and forgets the rows; letGo() also closes the reader's connection.
    void detach();
    void letGo();
    QSqlRecord &currentRow();

    Databases &m_dbs;
    QString m_name;
    QString m_fileName;
    QString m_statement;
    QString m_table;
    QString m_keyColumn;
    bool m_bound = false;
    QString m_boundFile;

    QSqlQuery m_query;
    std::vector<QSqlRecord> m_rows;
    bool m_exhausted = true;
    long m_pos = 0;
    bool m_onFound = false;
    QSqlRecord m_found;

    Mode m_mode = Mode::None;
    bool m_writing = false;
    QSqlRecord m_buffer;
    QVariant m_editKey;
    QSet<QString> m_changed;
    RecordSourceObserver *m_observer = nullptr;
};
