#include "RunnerPlacement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString viewer = QFileInfo(QStringLiteral(VLMOHELP_PROGRAM)).canonicalFilePath();
const QString editor = QFileInfo(QStringLiteral(VLMEDIT_PROGRAM)).canonicalFilePath();
const QString manual = QFileInfo(QStringLiteral(APMASTER_MANUAL_PDF)).canonicalFilePath();
const QString helpText = QFileInfo(QStringLiteral(APMASTER_HELP_TEXT)).canonicalFilePath();
// The demo generator's folder in the build tree, beside the programs' folders.
const QString buildPrograms = QFileInfo(viewer).absolutePath() + QStringLiteral("/../demo");

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(HelpPlacement, ANewCompanyGetsTheViewerTheEditorTheManualAndTheHelpText)
{
    QTemporaryDir data;
    EXPECT_EQ(placeHelp(data.path(), buildPrograms),
              "  help         vlmohelp.exe -> " + viewer + "\n" + "  editor       vlmedit.exe -> " +
                  editor + "\n" + "               manual-ACCTPAY.pdf -> " + manual + "\n" +
                  "               vendor1.txt from " + helpText + "\n");
    EXPECT_EQ(QFileInfo(data.filePath("vlmohelp.exe")).canonicalFilePath(), viewer);
    EXPECT_EQ(QFileInfo(data.filePath("vlmedit.exe")).canonicalFilePath(), editor);
    EXPECT_EQ(QFileInfo(data.filePath("manual-ACCTPAY.pdf")).canonicalFilePath(), manual);
    // The help text is a copy of the company's own, which the office may write to.
    EXPECT_FALSE(QFileInfo(data.filePath("vendor1.txt")).isSymLink());
    EXPECT_TRUE(QFileInfo(data.filePath("vendor1.txt")).isWritable());
    EXPECT_EQ(readBytes(data.filePath("vendor1.txt")), readBytes(helpText));
}

TEST(HelpPlacement, AnInstalledSystemGivesItsSharedManualAndHelpText)
{
    QTemporaryDir prefix, data;
    QDir(prefix.path()).mkpath(QStringLiteral("bin"));
    QDir(prefix.path()).mkpath(QStringLiteral("share/apmaster"));
    for (const QString &name : {QStringLiteral("vlmohelp"), QStringLiteral("vlmedit")})
        ASSERT_TRUE(QFile::link(name == QLatin1String("vlmohelp") ? viewer : editor,
                                prefix.filePath("bin/" + name)));
    QFile pdf(prefix.filePath("share/apmaster/manual-ACCTPAY.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::WriteOnly));
    pdf.write("%PDF-1.4 installed");
    pdf.close();
    QFile text(prefix.filePath("share/apmaster/vendor1.txt"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("installed help");
    text.close();
    placeHelp(data.path(), prefix.filePath("bin"));
    EXPECT_EQ(QFileInfo(data.filePath("manual-ACCTPAY.pdf")).canonicalFilePath(),
              QFileInfo(pdf).canonicalFilePath());
    EXPECT_EQ(readBytes(data.filePath("vendor1.txt")), "installed help");
}

TEST(HelpPlacement, TheOfficesOwnHelpTextIsKeptWhenAsked)
{
    QTemporaryDir data;
    QFile own(data.filePath("vendor1.txt"));
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.write("our own notes");
    own.close();
    EXPECT_TRUE(placeHelp(data.path(), buildPrograms, Existing::Keep)
                    .endsWith("               vendor1.txt of the folder kept\n"));
    EXPECT_EQ(readBytes(data.filePath("vendor1.txt")), "our own notes");
}

TEST(HelpPlacement, WithoutTheProgramsTheSummarySaysSoAndNoLinkIsMade)
{
    QTemporaryDir data, empty;
    const QString summary = placeHelp(data.path(), empty.path());
    EXPECT_TRUE(summary.startsWith("  help         the help viewer vlmohelp was not found\n"
                                   "  editor       the text editor vlmedit was not found\n"))
        << summary.toStdString();
    EXPECT_FALSE(QFileInfo::exists(data.filePath("vlmohelp.exe")));
    EXPECT_FALSE(QFileInfo::exists(data.filePath("vlmedit.exe")));
}

} // namespace
