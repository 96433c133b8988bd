// The apmaster-import program as a bookkeeper runs it.
#include "ImportFixture.h"

#include "support/SharedTestData.h"

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

namespace {
struct Outcome {
    int exitCode = -1;
    QString out;
    QString err;
};

Outcome runImport(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(APMASTER_IMPORT_PROGRAM), arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}
} // namespace

TEST(CommandLine, ImportsAFolderAndPrintsTheSummary)
{
    const QString path = SharedTestData::find(QStringLiteral("access/DateTestDatabase.mdb"));
    FAIL_WITHOUT_SHARED_FILE(path, QStringLiteral("access/DateTestDatabase.mdb"));
    ImportFixture fixture;
    fixture.copyIntoSource(path, "DateTestDatabase.mdb");
    const Outcome outcome = runImport({fixture.source(), fixture.data()});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.contains("  DateTest: 6 rows read, 6 rows written"))
        << outcome.out.toStdString();
    EXPECT_TRUE(outcome.out.contains("The summary is also in " + fixture.dataFile("import.log")));
    EXPECT_TRUE(outcome.err.contains("DateTestDatabase.mdb: DateTest, 6 of 6 rows"))
        << outcome.err.toStdString();
    EXPECT_TRUE(QFile::exists(fixture.dataFile("DateTestDatabase.mdb")));
}

TEST(CommandLine, AFailureIsSaidOnStandardErrorWithExitCodeOne)
{
    ImportFixture fixture;
    const Outcome outcome = runImport({fixture.source(), fixture.data()});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("holds no Access database files"))
        << outcome.err.toStdString();
}

TEST(CommandLine, WrongArgumentsShowTheUsage)
{
    const Outcome outcome = runImport({QStringLiteral("only-one")});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_TRUE(outcome.err.startsWith("usage: apmaster-import SOURCE_FOLDER DATA_FOLDER"));
}
