#include "RunnerPlacement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString program = QFileInfo(QStringLiteral(FPRINT_PROGRAM)).canonicalFilePath();

// The module starts fprint.exe from the data folder: a new company gets the link, whether the
// generator or the import is installed beside fprint or runs from its build folder.
TEST(AdjusterLink, ANewCompanyGetsFprintExeBesideAnInstalledGenerator)
{
    QTemporaryDir data;
    EXPECT_EQ(placeLayoutAdjuster(data.path(), QFileInfo(program).absolutePath()),
              "  1099 layouts fprint.exe -> " + program + "\n");
    EXPECT_EQ(QFileInfo(data.filePath("fprint.exe")).canonicalFilePath(), program);
}

TEST(AdjusterLink, ANewCompanyGetsFprintExeFromTheBuildTree)
{
    QTemporaryDir data;
    placeLayoutAdjuster(data.path(), QFileInfo(program).absolutePath() + "/../import");
    EXPECT_EQ(QFileInfo(data.filePath("fprint.exe")).canonicalFilePath(), program);
}

TEST(AdjusterLink, TheImportKeepsAnAdjusterTheFolderHasOfItsOwn)
{
    QTemporaryDir data;
    QFile own(data.filePath("fprint.exe"));
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.write("#!/bin/sh\n");
    own.close();
    EXPECT_EQ(placeLayoutAdjuster(data.path(), QFileInfo(program).absolutePath(), Existing::Keep),
              "  1099 layouts fprint.exe of the folder kept\n");
    EXPECT_FALSE(QFileInfo(data.filePath("fprint.exe")).isSymLink());
}

TEST(AdjusterLink, WithoutTheProgramTheSummarySaysSoAndNoLinkIsMade)
{
    QTemporaryDir data, empty;
    EXPECT_EQ(placeLayoutAdjuster(data.path(), empty.path()),
              "  1099 layouts the layout adjuster fprint was not found\n");
    EXPECT_FALSE(QFileInfo::exists(data.filePath("fprint.exe")));
}

} // namespace
