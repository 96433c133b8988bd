#pragma once

#include "support/QtPrinters.h"
#include <QString>
#include <QTemporaryDir>
#include <QVariant>

// A company data folder in a temporary directory, made the current folder while it lives.
// When the tests run on PostgreSQL, the folder's database.ini points at a fresh database of the
// test server, dropped again at the end.
// It holds real SQLite files built by the module's own schema: config.mdb with an `ap` settings
// row (all access levels 0), user.mdb with staff rows, gl.mdb with a few accounts and an empty
// ap.mdb.
// Skips a test of what only the SQLite files have (their file locks, write-ahead log and layout
// history, the sqlite3 program, file contents) when the tests run on PostgreSQL.
#define SQLITE_FILES_ONLY()                                                                        \
    if (DataFolder::onPostgres())                                                                  \
    GTEST_SKIP() << "about the SQLite files themselves; the server engine has its own tests"

class DataFolder {
public:
    // A folder with the company's files, or an empty one (on PostgreSQL: an empty database).
    enum class Start { Company, Empty };
    explicit DataFolder(Start start = Start::Company);
    ~DataFolder();
    DataFolder(const DataFolder &) = delete;
    DataFolder &operator=(const DataFolder &) = delete;

    QString path() const { return m_dir.path(); }
    QString file(const QString &name) const;

    // An empty database file with the module's tables.
    void createDatabase(const QString &name);
    // Takes a database away: the file, or on PostgreSQL its schema.
    void removeDatabase(const QString &name);
    // Runs a statement on a file through a connection of the test's own, closed afterwards.
    void exec(const QString &fileName, const QString &statement);
    QVariant scalar(const QString &fileName, const QString &statement);
    // Runs a statement as another user's program would, in a process of its own: the sqlite3
    // program on the file, or psql on its schema. The program's error output, "" when it
    // succeeded.
    QString otherProgram(const QString &fileName, const QString &statement,
                         QString *output = nullptr) const;
    // The same for a read: what the program printed (values separated by "|"), the test
    // failing when the program reported an error.
    QString otherProgramRead(const QString &fileName, const QString &statement) const;
    // Whether a table of a file has the column, on either engine.
    bool hasColumn(const QString &fileName, const QString &table, const QString &column);
    void writeFile(const QString &name, const QByteArray &contents);
    // An executable shell script under that name (the suite's other programs in tests).
    void writeProgram(const QString &name, const QString &script);
    QString readFile(const QString &name) const;
    // Waits until a started program has written a whole line to the file: a shell's
    // redirection makes the file before the line is in it.
    bool waitForLine(const QString &name, int msecs = 5000) const;

    // Adds a vendor with the given number and name (other columns empty or zero).
    void addVendor(int number, const QString &name);

    // Whether the tests run on the PostgreSQL engine (the folder then holds database.ini, and
    // each database file is a schema of a database of the folder's own on the test server).
    static bool onPostgres();
    // The folder's database on the test server ("" on the SQLite files).
    QString serverDatabase() const { return m_database; }

private:
    QTemporaryDir m_dir;
    QString m_database; // the folder's database on the test server, if any
    QString m_previous;
};
