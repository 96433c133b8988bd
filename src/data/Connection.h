#pragma once

#include <QSqlDatabase>
#include <QString>

#include <utility>

struct EngineSettings;

// A connection of its own for a program beside the module (the launcher, the report runner, the
// import, the copy tool, the demo, the report's record), made with the data layer's settings
// and the one busy timeout, and let go of when the object goes. Every failure is thrown as a
// DbError whose text is the engine's own reason; the caller names the file in its message.
class Connection {
public:
    // The folder's database of that file name, read-only: an SQLite file opened so that nothing
    // can be written and a missing file is never made, or, when the folder names a server, the
    // file's schema in a session that refuses every write. Only a missing database is a
    // DbError with the code FileNotFound (a file that is no database, a server that refuses
    // are others).
    static Connection readOnly(const QString &folder, const QString &fileName);
    // A session on the server the settings name that refuses every write, the file's schema
    // first on its search path (whether or not it is there).
    static Connection serverReader(const EngineSettings &settings, const QString &fileName);
    // An SQLite file on this computer by its path, read-only (never made when missing).
    static Connection readOnlyFile(const QString &path);
    // An SQLite file on this computer by its path, made when missing, for the program's own
    // writing (the report's record, a new file the import or the demo fills).
    static Connection localFile(const QString &path);
    // A database in memory, gone with the connection (the report runner's scratch room, to
    // which it attaches the company's files).
    static Connection scratch();
    // The server the settings name, with no schema chosen, named to the server after the
    // program: for a program that makes a company's schemas.
    static Connection server(const EngineSettings &settings, const QString &program);

    Connection(Connection &&other) noexcept;
    Connection &operator=(Connection &&other) noexcept;
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;
    ~Connection();

    QSqlDatabase db() const;
    bool onServer() const { return m_server; }
    // Runs a statement; throws DbError naming it when the engine refuses.
    void execute(const QString &statement) const;

private:
    Connection(QString name, bool server) : m_name(std::move(name)), m_server(server) {}
    static Connection sqlite(const QString &databaseName, bool readOnly);
    void release();

    QString m_name;
    bool m_server = false;
};

// A transaction on a connection for a scope: rolls back unless commit() was reached, also when
// the scope is left by an error. On an SQLite file it takes the write lock at once, so that a
// file another program holds fails at the start and not halfway; on the server it may write
// even where the session reads only.
class BulkTransaction {
public:
    explicit BulkTransaction(const Connection &connection);
    ~BulkTransaction();
    void commit();
    BulkTransaction(const BulkTransaction &) = delete;
    BulkTransaction &operator=(const BulkTransaction &) = delete;

private:
    const Connection &m_connection;
    bool m_open = false;
};
