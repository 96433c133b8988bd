#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString manual = QStringLiteral(APMASTER_MANUAL_PDF);

QString output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        return {};
    return QString::fromUtf8(process.readAllStandardOutput());
}

class Manual : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const char *tool : {"pdftotext", "pdfimages"})
            if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty())
                GTEST_SKIP() << tool << " is not installed (scripts/setup.sh installs it)";
    }
};

// Each chapter starts a page: its title is the first line of a page's text.
TEST_F(Manual, EveryChapterStartsAPageOfTheBuiltManual)
{
    const QStringList pages = output(QStringLiteral("pdftotext"), {manual, "-"})
                                  .split(QLatin1Char('\f'), Qt::SkipEmptyParts);
    QStringList pageTitles;
    for (const QString &page : pages)
        pageTitles << page.trimmed().section(QLatin1Char('\n'), 0, 0);
    for (const char *chapter :
         {"A/P Master user manual", "Daily use", "Lookup methods", "The screen's modes",
          "Lists and split detail", "Notes", "Reports", "1099 runs and layouts",
          "Year-end utilities", "User-defined fields", "Several users", "Deliberate departures",
          "Troubleshooting messages"})
        EXPECT_TRUE(pageTitles.contains(QString::fromUtf8(chapter)))
            << chapter << " does not start a page";
}

TEST_F(Manual, TheManualCarriesTheVersionAndTheDeparturesList)
{
    const QString text = output(QStringLiteral("pdftotext"), {manual, "-"});
    EXPECT_TRUE(text.contains("\nVersion 21.12\n")) << "no version on the title page";
    // The departures chapter is the project's one list, taken whole.
    EXPECT_TRUE(text.contains("The 1099 type is named beside its field."));
    // The troubleshooting chapter tells what Help does without a PDF viewer.
    EXPECT_TRUE(text.contains("Help does not open the manual"));
}

TEST_F(Manual, ThePicturesOfTheScreensAreInTheManual)
{
    // pdfimages lists one line per picture after two heading lines.
    const QStringList lines = output(QStringLiteral("pdfimages"), {"-list", manual})
                                  .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_GE(lines.size(), 2);
    const int pictures = int(lines.size()) - 2;
    // One for each picture the chapters show.
    EXPECT_EQ(pictures, 15);
    // The vendor screen at 1100x800 is among them, whole.
    EXPECT_TRUE(lines.filter(QRegularExpression(QStringLiteral("image +1100 +800 "))).size() >= 1);
}

// The builder's own refusals: a missing chapter or picture stops the build with its name.
class ManualBuilder : public ::testing::Test {
protected:
    void write(const QString &name, const QByteArray &text)
    {
        QDir().mkpath(QFileInfo(docs.filePath(name)).absolutePath());
        QFile file(docs.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QProcess::ExitStatus build(int *code, QString *errors)
    {
        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        process.setProcessEnvironment(env);
        process.start(QStringLiteral(APMASTER_MAKE_MANUAL),
                      {docs.path(), docs.filePath("out.pdf"), "9.9"});
        process.waitForFinished(60000);
        *code = process.exitCode();
        *errors = QString::fromLocal8Bit(process.readAllStandardError())
                      .split(QLatin1Char('\n'))
                      .filter(QRegularExpression(QStringLiteral("^apmaster-make-manual: ")))
                      .join(QLatin1Char('\n'));
        return process.exitStatus();
    }

    QTemporaryDir docs;
};

TEST_F(ManualBuilder, AChapterNamedButMissingStopsTheBuild)
{
    write("manual/chapters.txt", "manual/one.md\nmanual/two.md\n");
    write("manual/one.md", "# One\n\nText.\n");
    int code = 0;
    QString errors;
    build(&code, &errors);
    EXPECT_EQ(code, 1);
    EXPECT_TRUE(errors.contains(docs.filePath("manual/two.md"))) << errors.toStdString();
    EXPECT_FALSE(QFile::exists(docs.filePath("out.pdf")));
}

TEST_F(ManualBuilder, AMissingPictureStopsTheBuild)
{
    write("manual/chapters.txt", "manual/one.md\n");
    write("manual/one.md", "# One\n\n![The screen](screen.png)\n");
    int code = 0;
    QString errors;
    build(&code, &errors);
    EXPECT_EQ(code, 1);
    EXPECT_EQ(errors.trimmed(),
              "apmaster-make-manual: the picture screen.png is not in " + docs.path());
}

TEST_F(ManualBuilder, LinksToOtherFilesReadAsTheirText)
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        GTEST_SKIP() << "pdftotext is not installed";
    write("manual/chapters.txt", "# a comment\nmanual/one.md\n");
    write("manual/one.md", "# One\n\nSee [the server notes](server.md) for @VERSION@.\n");
    int code = 0;
    QString errors;
    build(&code, &errors);
    ASSERT_EQ(code, 0) << errors.toStdString();
    const QString text = output(QStringLiteral("pdftotext"), {docs.filePath("out.pdf"), "-"});
    EXPECT_TRUE(text.contains("See the server notes for 9.9.")) << text.toStdString();
}

} // namespace
