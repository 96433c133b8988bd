#include "common/OutputFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

class OutputFileTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    QString at(const QString &name) const { return dir.filePath(name); }
    void write(const QString &name, const QByteArray &contents)
    {
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(contents);
    }
    QByteArray read(const QString &name) const
    {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    }
    QStringList entries() const
    {
        return QDir(dir.path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }
    bool refused(const QString &name, OutputFile::Kind kind = OutputFile::Kind::Pdf) const
    {
        return !OutputFile::refusal(at(name), kind).isEmpty();
    }
};

const QByteArray sqliteHead = QByteArray("SQLite format 3", 16) + QByteArray(84, '\2');
const QByteArray jetHead = QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(40, '\0');
const QByteArray aceHead = QByteArray("\0\1\0\0Standard ACE DB\0", 20) + QByteArray(40, '\0');
const QByteArray walHead = QByteArray("\x37\x7f\x06\x82\0\x2d\xe2\x18", 8) + QByteArray(24, '\0');

struct NameCase {
    const char *name;
    bool refused;
};

TEST_F(OutputFileTest, DatabaseNamesAreRefusedWhetherTheFileExistsOrNot)
{
    const NameCase cases[] = {
        {"ap.mdb", true},         {"GL.MDB", true},    {"ap.mdb-wal", true},   {"ap.mdb-shm", true},
        {"ap.mdb-journal", true}, {"old.accdb", true}, {"ap.ldb", true},       {"ap.laccdb", true},
        {"ap.mdb.pdf", false},    {"mdb.pdf", false},  {"vendors.pdf", false}, {"apmdb", false},
    };
    for (const NameCase &c : cases)
        EXPECT_EQ(refused(QString::fromLatin1(c.name)), c.refused) << c.name;
    write("ap.mdb", sqliteHead);
    EXPECT_TRUE(refused("ap.mdb", OutputFile::Kind::Text));
}

TEST_F(OutputFileTest, DatabasesAreToldByTheirFirstBytesUnderAnyName)
{
    write("a.pdf", sqliteHead);
    write("b.pdf", jetHead);
    write("c.pdf", aceHead);
    write("d.pdf", walHead);
    for (const char *name : {"a.pdf", "b.pdf", "c.pdf", "d.pdf"}) {
        const QString why = OutputFile::refusal(at(name), OutputFile::Kind::Pdf);
        EXPECT_EQ(why, "The output file " + at(name) +
                           " is a database file of the company (its first bytes say so); no "
                           "output is ever written over it. Choose another file name.")
            << name;
    }
    // The same bytes one place later are no database.
    write("e.pdf", "%PDF-" + sqliteHead);
    EXPECT_FALSE(refused("e.pdf"));
}

TEST_F(OutputFileTest, FoldersDevicesAndPipesAreRefused)
{
    ASSERT_TRUE(QDir(dir.path()).mkdir("sub.pdf"));
    EXPECT_EQ(OutputFile::refusal(at("sub.pdf"), OutputFile::Kind::Pdf),
              "The output file " + at("sub.pdf") +
                  " is a folder, not a file. Choose another file name.");
    EXPECT_EQ(OutputFile::refusal("/dev/zero", OutputFile::Kind::Text),
              "The output file /dev/zero is a device or another special file, not a plain file. "
              "Choose another file name.");
    ASSERT_EQ(::mkfifo(QFile::encodeName(at("pipe.csv")).constData(), 0600), 0);
    EXPECT_TRUE(refused("pipe.csv", OutputFile::Kind::Csv));
}

TEST_F(OutputFileTest, LinksAreJudgedByWhatTheyLeadTo)
{
    write("ap.mdb", sqliteHead);
    write("old.pdf", "%PDF-1.4\n");
    ASSERT_TRUE(QFile::link(at("ap.mdb"), at("one.pdf")));
    ASSERT_TRUE(QFile::link(at("one.pdf"), at("two.pdf"))); // a link to a link
    ASSERT_TRUE(QFile::link(dir.path(), at("folder.pdf")));
    ASSERT_TRUE(QFile::link("/dev/null", at("null.pdf")));
    ASSERT_TRUE(QFile::link(at("nowhere.pdf"), at("dangling.pdf")));
    ASSERT_TRUE(QFile::link(at("old.pdf"), at("latest.pdf")));
    const QString end = QFileInfo(at("ap.mdb")).canonicalFilePath();
    EXPECT_EQ(OutputFile::refusal(at("two.pdf"), OutputFile::Kind::Pdf),
              "The output file " + at("two.pdf") + " (a link to " + end +
                  ") is a database file of the company; no output is ever written over it. "
                  "Choose another file name.");
    EXPECT_TRUE(refused("one.pdf"));
    EXPECT_TRUE(refused("folder.pdf"));
    EXPECT_TRUE(refused("null.pdf"));
    EXPECT_EQ(OutputFile::refusal(at("dangling.pdf"), OutputFile::Kind::Pdf),
              "The output file " + at("dangling.pdf") + " is a link to " + at("nowhere.pdf") +
                  ", which does not exist. Choose another file name.");
    EXPECT_FALSE(refused("latest.pdf"));
}

TEST_F(OutputFileTest, OnlyAFileOfTheSameKindMayBeReplaced)
{
    write("report.pdf", "%PDF-1.4\n%...");
    write("report.csv", "Vendor #,Name\r\n12,Adams\r\n");
    write("unix.csv", "Vendor #,Name\n12,Adams\n");
    write("import.log", "2026-01-31T10:00:00 Imported 3 files.\n");
    write("picture.png", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
    write("latin1.log", "Caf\xe9 receipts\n");
    write("empty.pdf", QByteArray());
    using K = OutputFile::Kind;
    EXPECT_FALSE(refused("report.pdf", K::Pdf));
    EXPECT_TRUE(refused("report.csv", K::Pdf));
    EXPECT_FALSE(refused("report.csv", K::Csv));
    EXPECT_TRUE(refused("report.pdf", K::Csv));
    EXPECT_TRUE(refused("unix.csv", K::Csv)); // not a file the runner wrote: its lines end in CR LF
    EXPECT_FALSE(refused("import.log", K::Text));
    EXPECT_FALSE(refused("report.csv", K::Text));
    EXPECT_TRUE(refused("picture.png", K::Text));
    EXPECT_TRUE(refused("latin1.log", K::Text));
    EXPECT_FALSE(refused("empty.pdf", K::Pdf));
    EXPECT_FALSE(refused("new.pdf", K::Pdf));
    EXPECT_EQ(OutputFile::refusal(at("picture.png"), K::Pdf),
              "The output file " + at("picture.png") +
                  " exists and is not a PDF file (its first bytes say otherwise); it is left as "
                  "it is. Choose another file name.");
}

TEST_F(OutputFileTest, TheOutputTakesTheNameOnlyAtCommitAndKeepsThePermissions)
{
    write("report.pdf", "%PDF-1.4 old");
    ASSERT_TRUE(QFile::setPermissions(at("report.pdf"),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    QString error;
    OutputFile out(at("report.pdf"), OutputFile::Kind::Pdf);
    ASSERT_TRUE(out.open(error)) << error.toStdString();
    out.device().write("%PDF-1.4 new");
    EXPECT_EQ(read("report.pdf"), "%PDF-1.4 old");
    EXPECT_EQ(entries().size(), 2);
    ASSERT_TRUE(out.commit(error)) << error.toStdString();
    EXPECT_EQ(read("report.pdf"), "%PDF-1.4 new");
    EXPECT_EQ(entries(), QStringList{"report.pdf"});
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(at("report.pdf")).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

TEST_F(OutputFileTest, AnOutputNeverCommittedLeavesTheTargetAndNoWorkFile)
{
    write("report.pdf", "%PDF-1.4 good");
    {
        QString error;
        OutputFile out(at("report.pdf"), OutputFile::Kind::Pdf);
        ASSERT_TRUE(out.open(error));
        out.device().write("%PDF-1.4 half");
    }
    EXPECT_EQ(read("report.pdf"), "%PDF-1.4 good");
    EXPECT_EQ(entries(), QStringList{"report.pdf"});
}

TEST_F(OutputFileTest, ATargetThatBecameADatabaseWhileWritingIsLeftAsItIs)
{
    QString error;
    OutputFile out(at("report.pdf"), OutputFile::Kind::Pdf);
    ASSERT_TRUE(out.open(error));
    out.device().write("%PDF-1.4 new");
    write("report.pdf", sqliteHead);
    EXPECT_FALSE(out.commit(error));
    EXPECT_EQ(error, "The output file " + at("report.pdf") +
                         " is a database file of the company (its first bytes say so); no "
                         "output is ever written over it. Choose another file name.");
    EXPECT_EQ(read("report.pdf"), sqliteHead);
    EXPECT_EQ(entries(), QStringList{"report.pdf"});
}

TEST_F(OutputFileTest, ARefusedTargetMakesNoWorkFile)
{
    write("ap.mdb", sqliteHead);
    QString error;
    OutputFile out(at("ap.mdb"), OutputFile::Kind::Text);
    EXPECT_FALSE(out.open(error));
    EXPECT_EQ(error, "The output file " + at("ap.mdb") +
                         " is a database file of the company; no output is ever written over "
                         "it. Choose another file name.");
    EXPECT_EQ(entries(), QStringList{"ap.mdb"});
    EXPECT_EQ(read("ap.mdb"), sqliteHead);
}

TEST_F(OutputFileTest, AFolderThatDoesNotExistIsNamed)
{
    QString error;
    OutputFile out(at("missing/report.pdf"), OutputFile::Kind::Pdf);
    EXPECT_FALSE(out.open(error));
    EXPECT_EQ(error, "The file " + at("missing/report.pdf") +
                         " cannot be written: No such file or directory.");
}

} // namespace
