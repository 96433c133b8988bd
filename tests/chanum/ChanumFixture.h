#pragma once

#include "support/DataFolder.h"

#include <QDate>
#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

// A company with three vendors and their invoices, checks, notes and user-defined values, and
// the real chanum program run on it with its dialogs answered from a file.
class ChanumProgram : public testing::Test {
protected:
    struct Run {
        int exitCode = -1;
        QString output; // the dialogs, one a line
        QString errors;
    };

    void SetUp() override;
    void TearDown() override;

    // A date of the current year (MMDD), or of the year before.
    qlonglong thisYear(int monthDay) const { return year * 10000LL + monthDay; }
    qlonglong lastYear(int monthDay) const { return (year - 1) * 10000LL + monthDay; }

    // Runs the program in the data folder with the job argument; the answers are the lines of
    // its answers file (the first may stand for the clipboard).
    Run run(const QString &argument, const QStringList &answers, const QStringList &options = {});
    // Starts it without waiting.
    void start(QProcess &process, const QString &argument, const QStringList &answers,
               const QStringList &options = {});
    // A statement read with the engine's own shell program (sqlite3 or psql).
    QString read(const QString &statement) const
    {
        return folder.otherProgramRead(QStringLiteral("ap.mdb"), statement);
    }
    // Every row of the vendor file that carries a vendor number, with its money in cents.
    QString everything() const;
    // Another user's program holds the vendor's lock (SQLite: the file's write lock; PostgreSQL:
    // the vendor's row) for the given seconds; returns once it is held.
    bool holdVendor(qlonglong vendor, int seconds);

    DataFolder folder;
    int year = QDate::currentDate().year();
    QProcess holder;
};
