// The pickers as programs: their placement in a data folder, their answers to --help and
// --version, a database they cannot read, and the answer file the module reads.
#include "RunnerPlacement.h"
#include "common/PickedAnswer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct Outcome {
    int exitCode = -1;
    QString out;
    QString err;
};

Outcome runIn(const QString &folder, const QString &program, const QStringList &arguments,
              const QString &keys = {})
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    if (!keys.isEmpty())
        env.insert("APMASTER_PICKER_KEYS", keys);
    process.setProcessEnvironment(env);
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(30000));
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()),
            QString::fromLocal8Bit(process.readAllStandardError())};
}

TEST(PickerPlacement, BothPickersAreLinkedUnderTheSuitesNames)
{
    QTemporaryDir data;
    const QString programs = QFileInfo(QStringLiteral(VENLOOKP_PROGRAM)).path();
    const QString lines = placePickers(data.path(), programs);
    EXPECT_TRUE(lines.startsWith("  pickers      venlookp.exe -> ")) << lines.toStdString();
    EXPECT_TRUE(lines.contains("\n               gllookup.exe -> ")) << lines.toStdString();
    EXPECT_EQ(QFileInfo(data.filePath("venlookp.exe")).symLinkTarget(),
              QFileInfo(QStringLiteral(VENLOOKP_PROGRAM)).canonicalFilePath());
    EXPECT_EQ(QFileInfo(data.filePath("gllookup.exe")).symLinkTarget(),
              QFileInfo(QStringLiteral(GLLOOKUP_PROGRAM)).canonicalFilePath());
}

TEST(PickerPlacement, APickerOfTheFolderIsKeptWhenAskedAndMissingProgramsAreNamed)
{
    QTemporaryDir data, empty;
    QFile own(data.filePath("venlookp.exe"));
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.write("#!/bin/sh\n");
    own.close();
    const QString programs = QFileInfo(QStringLiteral(VENLOOKP_PROGRAM)).path();
    const QString kept = placePickers(data.path(), programs, Existing::Keep);
    EXPECT_TRUE(kept.contains("venlookp.exe of the folder kept")) << kept.toStdString();
    EXPECT_FALSE(QFileInfo(data.filePath("venlookp.exe")).isSymLink());
    EXPECT_EQ(placePickers(data.path(), empty.path()),
              "  pickers      the vendor picker venlookp was not found\n"
              "               the G/L account picker gllookup was not found\n");
}

TEST(PickerProgram, HelpAndVersionAnswerWithoutAWindow)
{
    QTemporaryDir data;
    for (const char *program : {VENLOOKP_PROGRAM, GLLOOKUP_PROGRAM}) {
        const QString name = QFileInfo(QString::fromUtf8(program)).fileName();
        const Outcome help = runIn(data.path(), program, {"--help"});
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_TRUE(help.out.startsWith("Usage: " + name + "\n")) << help.out.toStdString();
        const Outcome version = runIn(data.path(), program, {"--version"});
        EXPECT_EQ(version.exitCode, 0);
        EXPECT_TRUE(version.out.startsWith(name + " 21.12")) << version.out.toStdString();
    }
}

TEST(PickerProgram, AFolderWithoutTheDatabaseEndsWithCodeTwoNamingTheFile)
{
    QTemporaryDir data;
    const Outcome vendors = runIn(data.path(), VENLOOKP_PROGRAM, {}, "{ESC}");
    EXPECT_EQ(vendors.exitCode, 2);
    EXPECT_TRUE(vendors.err.contains("The vendor file ap.mdb cannot be read: Could not find file"))
        << vendors.err.toStdString();
    const Outcome accounts = runIn(data.path(), GLLOOKUP_PROGRAM, {}, "{ESC}");
    EXPECT_EQ(accounts.exitCode, 2);
    EXPECT_TRUE(accounts.err.contains("The chart of accounts gl.mdb cannot be read"))
        << accounts.err.toStdString();
}

TEST(PickedAnswer, TheModuleTakesOnlyTheAnswerOfThePickerItRanOnce)
{
    const qint64 self = QCoreApplication::applicationPid();
    PickedAnswer::clear();
    EXPECT_EQ(PickedAnswer::take("venlookp"), "");
    ASSERT_TRUE(PickedAnswer::leave(self, "gllookup", "5000"));
    EXPECT_EQ(PickedAnswer::take("venlookp"), ""); // another picker's answer is no answer
    EXPECT_FALSE(QFileInfo::exists(PickedAnswer::pathFor(self)));
    ASSERT_TRUE(PickedAnswer::leave(self, "venlookp", "251"));
    EXPECT_EQ(PickedAnswer::take("venlookp"), "251");
    EXPECT_EQ(PickedAnswer::take("venlookp"), ""); // taken once
    ASSERT_TRUE(PickedAnswer::leave(self, "venlookp", "300"));
    PickedAnswer::clear();
    EXPECT_EQ(PickedAnswer::take("venlookp"), "");
}

TEST(PickedAnswer, EachModuleHasAFileOfItsOwn)
{
    EXPECT_NE(PickedAnswer::pathFor(100), PickedAnswer::pathFor(101));
    EXPECT_TRUE(PickedAnswer::pathFor(4242).endsWith("/apmaster-picked-4242"));
}

} // namespace
