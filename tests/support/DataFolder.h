#pragma once

#include "support/QtPrinters.h"
#include <QString>
#include <QTemporaryDir>
#include <QVariant>

// A company data folder in a temporary directory, made the current folder while it lives.
// It holds real SQLite files built by the module's own schema: config.mdb with an `ap` settings
// row (all access levels 0), user.mdb with staff rows, gl.mdb with a few accounts and an empty
// ap.mdb.
class DataFolder {
public:
    DataFolder();
    ~DataFolder();
    DataFolder(const DataFolder &) = delete;
    DataFolder &operator=(const DataFolder &) = delete;

    QString path() const { return m_dir.path(); }
    QString file(const QString &name) const;

    // An empty database file with the module's tables.
    void createDatabase(const QString &name);
    // Runs a statement on a file through a connection of the test's own, closed afterwards.
    void exec(const QString &fileName, const QString &statement);
    QVariant scalar(const QString &fileName, const QString &statement);
    void writeFile(const QString &name, const QByteArray &contents);
    // An executable shell script under that name (the suite's other programs in tests).
    void writeProgram(const QString &name, const QString &script);
    QString readFile(const QString &name) const;

    // Adds a vendor with the given number and name (other columns empty or zero).
    void addVendor(int number, const QString &name);

private:
    QTemporaryDir m_dir;
    QString m_previous;
};
