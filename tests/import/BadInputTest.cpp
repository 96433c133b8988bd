// Input the import cannot use: each gets a clear message, leaves the data folder as it was and
// ends within its time limit.
#include "ImportFixture.h"
#include "StreamBuilder.h"

#include "support/SharedTestData.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace {
QByteArray sampleBytes()
{
    const QString path = SharedTestData::find(QStringLiteral("access/nwind.mdb"));
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return f.readAll();
}

QByteArray randomBytes(qsizetype size, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes(size, '\0');
    for (char &b : bytes)
        b = char(random.bounded(256));
    return bytes;
}

const char *noFolder = "(no data folder)";
} // namespace

TEST(BadInput, ATruncatedFileIsNamedAndNothingIsMade)
{
    const QByteArray whole = sampleBytes();
    FAIL_WITHOUT_SHARED_FILE(QString(whole.isEmpty() ? "" : "found"),
                             QStringLiteral("access/nwind.mdb"));
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", whole.left(1024 * 1024));
    QElapsedTimer timer;
    timer.start();
    const QString message = fixture.run(20);
    EXPECT_TRUE(
        message.startsWith("The import stopped at '" + fixture.sourceFile("ap.mdb") + "': "))
        << message.toStdString();
    EXPECT_TRUE(message.contains("damaged")) << message.toStdString();
    EXPECT_EQ(fixture.dataEntries().join(","), noFolder);
    EXPECT_LT(timer.elapsed(), 20000);
}

TEST(BadInput, AFileOfRandomBytesIsNotAnAccessDatabase)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", randomBytes(100000, 7));
    const QString message = fixture.run(20);
    EXPECT_EQ(message, "The file '" + fixture.sourceFile("ap.mdb") +
                           "' is not an Access database (its first bytes say otherwise). "
                           "Nothing was imported.");
    EXPECT_EQ(fixture.dataEntries().join(","), noFolder);
}

TEST(BadInput, RandomBytesBehindAnAccessHeaderAreReportedAsDamaged)
{
    const QByteArray whole = sampleBytes();
    FAIL_WITHOUT_SHARED_FILE(QString(whole.isEmpty() ? "" : "found"),
                             QStringLiteral("access/nwind.mdb"));
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", whole.left(4096) + randomBytes(400 * 1024, 11));
    const QString message = fixture.run(20);
    EXPECT_TRUE(message.startsWith("The import stopped at '" + fixture.sourceFile("ap.mdb")))
        << message.toStdString();
    EXPECT_EQ(fixture.dataEntries().join(","), noFolder);
}

TEST(BadInput, AZeroLengthFileIsEmpty)
{
    ImportFixture fixture;
    fixture.writeSource("gl.mdb", QByteArray());
    const QString message = fixture.run();
    EXPECT_TRUE(message.startsWith("The file '" + fixture.sourceFile("gl.mdb") +
                                   "' is empty: it holds no Access database."))
        << message.toStdString();
    EXPECT_EQ(fixture.dataEntries().join(","), noFolder);
}

TEST(BadInput, AFolderWithoutAccessFilesIsSaidSo)
{
    ImportFixture fixture;
    fixture.writeSource("readme.txt", "not a database");
    const QString message = fixture.run();
    EXPECT_TRUE(message.startsWith("The folder '" + fixture.source() +
                                   "' holds no Access database files (*.mdb); nothing was "
                                   "imported."))
        << message.toStdString();
    EXPECT_EQ(fixture.dataEntries().join(","), noFolder);
}

TEST(BadInput, AMissingSourceFolderIsSaidSo)
{
    ImportFixture fixture;
    QDir(fixture.source()).removeRecursively();
    EXPECT_EQ(fixture.run(), "The folder '" + fixture.source() + "' does not exist.");
}

TEST(BadInput, ADataFolderThatHoldsACompanyIsLeftAlone)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(StreamBuilder().endOfFile().bytes());
    QDir().mkpath(fixture.data());
    QFile company(fixture.dataFile("GL.MDB"));
    ASSERT_TRUE(company.open(QIODevice::WriteOnly));
    company.write("the company's own");
    company.close();
    const QString message = fixture.run();
    EXPECT_TRUE(message.startsWith("The folder '" + fixture.data() +
                                   "' already holds a company (GL.MDB). The import writes only "
                                   "into a new or empty data folder; nothing was changed."))
        << message.toStdString();
    EXPECT_EQ(fixture.dataEntries().join(","), "GL.MDB");
    ASSERT_TRUE(company.open(QIODevice::ReadOnly));
    EXPECT_EQ(company.readAll(), QByteArray("the company's own"));
}

TEST(BadInput, AnEmptyDataFolderThatExistsIsUsedAndKept)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(StreamBuilder().endOfFile().bytes());
    QDir().mkpath(fixture.data());
    EXPECT_EQ(fixture.run(), QString());
    EXPECT_EQ(fixture.dataEntries().join(","), "ap.mdb,import.log");
}

TEST(BadInput, AReaderThatHangsIsStoppedAtTheTimeLimit)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useReaderScript("exec sleep 60");
    QElapsedTimer timer;
    timer.start();
    const QString message = fixture.run(1);
    EXPECT_TRUE(message.contains("reading it did not end within 1 seconds, so it was stopped: "
                                 "the file is probably damaged"))
        << message.toStdString();
    EXPECT_LT(timer.elapsed(), 15000);
    EXPECT_EQ(fixture.dataEntries().join(","), noFolder);
}

TEST(BadInput, AReaderThatCrashesIsReportedAsDamage)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useReaderScript("kill -SEGV $$");
    const QString message = fixture.run(20);
    EXPECT_TRUE(message.contains("the Access reader broke down on it: the file is damaged"))
        << message.toStdString();
    EXPECT_EQ(fixture.dataEntries().join(","), noFolder);
}

TEST(BadInput, AFailureInTheSecondFileUndoesTheFirst)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.writeSource("gl.mdb", jetHeader());
    // The same stand-in reader for both files: the first passes, the second stops half-way.
    fixture.useReaderScript(QStringLiteral("case \"$1\" in *ap.mdb) printf 'Z';; *) printf 'T';"
                                           " exit 3;; esac"));
    const QString message = fixture.run(20);
    EXPECT_TRUE(message.contains("The import stopped at '" + fixture.sourceFile("gl.mdb") +
                                 "': the Access reader stopped before the end of it"))
        << message.toStdString();
    EXPECT_EQ(fixture.dataEntries().join(","), noFolder);
}

TEST(BadInput, AReaderThatSendsRowsWithoutEndIsStoppedAtTheTimeLimit)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    // A table of one column, then rows of an empty value for ever.
    const QByteArray head =
        StreamBuilder().table("looping", 1, {{"note", ReaderProtocol::Text}}).bytes();
    const QString headFile = fixture.sourceFile("head.bin");
    QFile f(headFile);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(head);
    f.close();
    fixture.useReaderScript(QStringLiteral("cat '%1'; yes RN | tr -d '\\n'").arg(headFile));
    QElapsedTimer timer;
    timer.start();
    const QString message = fixture.run(2);
    EXPECT_TRUE(message.contains("reading it did not end within 2 seconds"))
        << message.toStdString();
    EXPECT_LT(timer.elapsed(), 20000);
    EXPECT_EQ(fixture.dataEntries().join(","), noFolder);
}
