#pragma once

#include <QString>
#include <QStringList>

// The sample files the project shares with its neighbours (Access files, say), looked for in
// $APMASTER_TESTDATA, then beside the checkout (../shared/testdata), then in /work/shared/testdata.
namespace SharedTestData {
// The file's path; empty when no candidate folder holds it.
QString find(const QString &relative);
// Where the file was looked for, for the reason a test gives when it skips.
QString searched(const QString &relative);
} // namespace SharedTestData

// Skips the test with a reason that names the file and where it was looked for; CTest reports
// such a test as skipped, not passed.
#define SKIP_WITHOUT_SHARED_FILE(path, relative)                                                   \
    if ((path).isEmpty())                                                                          \
    GTEST_SKIP() << "shared test file " << QString(relative).toStdString() << " not found in "     \
                 << SharedTestData::searched(QString(relative)).toStdString()

// Fails the test, naming the file and where it was looked for, when the file is absent: for
// tests whose whole point is the shared file, so that a checkout without it cannot pass them.
#define FAIL_WITHOUT_SHARED_FILE(path, relative)                                                   \
    if ((path).isEmpty())                                                                          \
    GTEST_FAIL() << "shared test file " << QString(relative).toStdString() << " not found in "     \
                 << SharedTestData::searched(QString(relative)).toStdString()                      \
                 << " (set APMASTER_TESTDATA to the folder that holds access/)"
