#include "RunnerPlacement.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString program = QFileInfo(QStringLiteral(CHANUM_PROGRAM)).canonicalFilePath();

// The module starts chanum.exe from the data folder: a demo company gets the link, whether the
// generator is installed beside chanum or runs from its build folder.
TEST(NumberUtilityLink, ADemoCompanyGetsChanumExeBesideAnInstalledGenerator)
{
    QTemporaryDir data;
    const QString installed = QFileInfo(program).absolutePath();
    EXPECT_EQ(placeNumberUtility(data.path(), installed),
              "  numbers      chanum.exe -> " + program + "\n");
    EXPECT_EQ(QFileInfo(data.filePath("chanum.exe")).canonicalFilePath(), program);
}

TEST(NumberUtilityLink, ADemoCompanyGetsChanumExeFromTheBuildTree)
{
    QTemporaryDir data;
    const QString demoFolder = QFileInfo(program).absolutePath() + "/../demo";
    placeNumberUtility(data.path(), demoFolder);
    EXPECT_EQ(QFileInfo(data.filePath("chanum.exe")).canonicalFilePath(), program);
}

TEST(NumberUtilityLink, WithoutTheProgramTheSummarySaysSoAndNoLinkIsMade)
{
    QTemporaryDir data, empty;
    EXPECT_EQ(placeNumberUtility(data.path(), empty.path()),
              "  numbers      the vendor-number utility chanum was not found\n");
    EXPECT_FALSE(QFileInfo::exists(data.filePath("chanum.exe")));
}

} // namespace
