#include "RunnerPlacement.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString program = QFileInfo(QStringLiteral(VINFO32_PROGRAM)).canonicalFilePath();

// The module starts vinfo32.exe from the data folder: a new company gets the link, whether the
// generator is installed beside vinfo32 or runs from its build folder.
TEST(VersionWindowLink, ACompanyGetsVinfo32ExeBesideAnInstalledGenerator)
{
    QTemporaryDir data;
    EXPECT_EQ(placeVersionWindow(data.path(), QFileInfo(program).absolutePath()),
              "  version      vinfo32.exe -> " + program + "\n");
    EXPECT_EQ(QFileInfo(data.filePath("vinfo32.exe")).canonicalFilePath(), program);
}

TEST(VersionWindowLink, ACompanyGetsVinfo32ExeFromTheBuildTree)
{
    QTemporaryDir data;
    placeVersionWindow(data.path(), QFileInfo(program).absolutePath() + "/../demo");
    EXPECT_EQ(QFileInfo(data.filePath("vinfo32.exe")).canonicalFilePath(), program);
}

TEST(VersionWindowLink, AFileOfTheFolderIsKeptWhenAsked)
{
    QTemporaryDir data;
    QFile own(data.filePath("vinfo32.exe"));
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.close();
    EXPECT_EQ(placeVersionWindow(data.path(), QFileInfo(program).absolutePath(), Existing::Keep),
              "  version      vinfo32.exe of the folder kept\n");
    EXPECT_FALSE(QFileInfo(data.filePath("vinfo32.exe")).isSymLink());
}

TEST(VersionWindowLink, WithoutTheProgramTheSummarySaysSoAndNoLinkIsMade)
{
    QTemporaryDir data, empty;
    EXPECT_EQ(placeVersionWindow(data.path(), empty.path()),
              "  version      the version window vinfo32 was not found\n");
    EXPECT_FALSE(QFileInfo::exists(data.filePath("vinfo32.exe")));
}

} // namespace
