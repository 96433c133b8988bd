#pragma once

#include <QSet>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>
#include <vector>

class Databases;
class OrderKey;

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
// the statement's rows in its order. The source holds only a window of rows around the cursor
// (and the window it left last), read when the cursor reaches them: on from the rows held by
// their order values where the engine serves the order from an index, otherwise by position.
// Each read ends its statement, so no read stays open between the user's steps (an open read
// would keep the engine from starting its write-ahead log again, and the log would grow with
// every write). Through a connection of the source's own. The current record can be edited and
// written back by its key.
class RecordSource {
public:
    // Rows read at a time as the cursor moves; a refresh reads only the first row. Making the
    // records of a read costs more than the engine's part of it, so the windows stay small.
    static constexpr int windowRows = 64;

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
    // The number of rows the source holds now: never more than two windows.
    int fetchedCount() const;
    // True when nothing is bound or the rows held reach the end of the result.
    bool allFetched() const;

    // The number of rows of the result, counted once per refresh (0 when nothing is bound).
    long long rowCount();
    // Rows `first` to `first + count - 1` of the result (fewer at its end), read without moving
    // the cursor and without keeping them.
    std::vector<QSqlRecord> readRows(long long first, int count);
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
    // Writes those values into the current record at once: an edit and its update in one step.
    // Where the engine can, outside a write transaction and an open edit, that is one statement
    // that locks the row itself and commits on its own; a row held by another user fails as an
    // edit of it does.
    void updateAtOnce(const QList<QPair<QString, QVariant>> &values, Commit commit);
    void deleteCurrent();
    // The current row as the database holds it now (empty when it is gone), read by its key.
    QSqlRecord reread() const;

private:
    enum class Mode { None, Edit, Add };
    // Rows by position: `first` is the position of rows[0].
    struct Window {
        long long first = 0;
        std::vector<QSqlRecord> rows;
        long long end() const { return first + static_cast<long long>(rows.size()); }
        bool holds(long long pos) const { return pos >= first && pos < end(); }
    };
    // Makes the row at `pos` held, reading a window that starts there (forward) or ends there;
    // false when the result has no such row.
    bool hold(long long pos, bool forward);
    // The `count` rows next to the window (after it, or before it), read on by their order
    // values; none when the statement or the rows held do not allow it.
    std::optional<std::vector<QSqlRecord>> readOnByKey(bool forward, int count);
    // How many rows held, counted from the window's last row back (forward) or from its first
    // on, have that row's order values; none when the rows held do not tell.
    std::optional<int> tiesAtEdge(const OrderKey &key, bool forward) const;
    const OrderKey *orderKey();
    void beginWrite(Commit commit);
    void endWrite(bool commit);
    void lockEditedRow();
    QString fullStatement() const;
    // Lets go of the reads on by key kept prepared.
    void forgetReadsOn();
    // Forgets the rows; letGo() also closes the reader's connection.
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

    Window m_window;   // the rows around the cursor
    Window m_previous; // the window the cursor left last, for a step back across the edge
    // The statement's order key, found on the first read by key after a refresh.
    enum class Keyed { Unknown, Yes, No };
    Keyed m_keyed = Keyed::Unknown;
    std::unique_ptr<OrderKey>
        m_orderKey; // windows read one after another in one direction: + on, - back
    // The reads on by key, onward [1] and back [0], prepared once for the statement and kept
    // (a server prepares a statement in a round trip of its own), with the text each holds.
    QSqlQuery m_readOn[2];
    QString m_readOnText[2];
    long long m_pos = 0;   // -1 before the first row; m_size (when known) after the last
    long long m_size = -1; // the number of rows once known (counted, or the end was read)
    bool m_onFound = false;
    QSqlRecord m_found;

    Mode m_mode = Mode::None;
    bool m_writing = false;
    QSqlRecord m_buffer;
    QVariant m_editKey;
    QSet<QString> m_changed;
    RecordSourceObserver *m_observer = nullptr;
};
