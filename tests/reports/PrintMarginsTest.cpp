#include "reports/PrintMargins.h"
#include "support/DataFolder.h"
#include "support/FakeDialogs.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

class PrintMarginsTest : public ::testing::Test {
protected:
    DataFolder folder;
    FakeDialogs dialogs;
    PrintMargins margins{3};

    void answer(const QString &top, const QString &left)
    {
        dialogs.inputAnswers = {top, left};
        margins.adjust(dialogs);
    }
    bool fileWritten() const { return QFile::exists(folder.file("printmargin.3")); }
};

TEST_F(PrintMarginsTest, TheFileBelongsToTheUsersSystemNumber)
{
    EXPECT_EQ(margins.fileName(), "printmargin.3");
    EXPECT_EQ(PrintMargins(0).fileName(), "printmargin.0");
}

TEST_F(PrintMarginsTest, WithoutAFileBothMarginsAreZero)
{
    margins.read(dialogs);
    EXPECT_EQ(margins.top(), 0);
    EXPECT_EQ(margins.left(), 0);
    EXPECT_EQ(dialogs.count(), 0);
}

TEST_F(PrintMarginsTest, ReadingToleratesBlanksAroundTheNumbers)
{
    folder.writeFile("printmargin.3", "  720 \r\n 1440\r\n");
    margins.read(dialogs);
    EXPECT_EQ(margins.top(), 720);
    EXPECT_EQ(margins.left(), 1440);
}

TEST_F(PrintMarginsTest, AFileWithOnlyTheTopMarginLeavesTheLeftAtZero)
{
    folder.writeFile("printmargin.3", "360\n");
    margins.read(dialogs);
    EXPECT_EQ(margins.top(), 360);
    EXPECT_EQ(margins.left(), 0);
}

TEST_F(PrintMarginsTest, AJunkFileIsNamedAndReadAsNoMargins)
{
    folder.writeFile("printmargin.3", "abc\n12x\n");
    margins.read(dialogs);
    EXPECT_EQ(margins.top(), 0);
    EXPECT_EQ(margins.left(), 0);
    ASSERT_NE(dialogs.last(), nullptr);
    EXPECT_TRUE(dialogs.last()->text.contains("printmargin.3"));
}

TEST_F(PrintMarginsTest, TheDialogOpensWithItsExplanation)
{
    answer("", "");
    ASSERT_GE(dialogs.shown.size(), 2u);
    EXPECT_EQ(dialogs.shown[0].text,
              "You may adjust both the TOP and LEFT printing margins for \nVelmora Office reports. "
              "Moving the margins affect all reports\nthat use the Cryprint module. Click OK to "
              "begin.");
    EXPECT_EQ(dialogs.shown[0].title, "Set Printer Margins");
    EXPECT_EQ(dialogs.shown[1].title, "Adjust TOP Margin");
    EXPECT_EQ(
        dialogs.shown[1].text,
        "Set the TOP margin by typing a number in inches.\nFor example: 1=1 inch  or .5 = "
        "1/2 inch \n\nType a zero to disable the feature altogether\n\nWhen done, press ENTER "
        "or click OK.\n");
}

TEST_F(PrintMarginsTest, HalfAnInchIs720TwipsAndElevenInchesAreAccepted)
{
    answer(" .5 ", "11");
    EXPECT_EQ(margins.top(), 720);
    EXPECT_EQ(margins.left(), 15840);
    ASSERT_TRUE(fileWritten());
    EXPECT_EQ(folder.readFile("printmargin.3"), "720\n15840\n");
    EXPECT_EQ(dialogs.shown[2].title, "Adjust LEFT Margin");
    EXPECT_TRUE(dialogs.shown[2].text.startsWith("Set the LEFT margin by typing a number in "
                                                 "inches.\n"));
}

TEST_F(PrintMarginsTest, JustOverElevenInchesEndsTheDialogWithoutWriting)
{
    answer("11.01", "1");
    EXPECT_FALSE(fileWritten());
    EXPECT_EQ(dialogs.count("input"), 1);
    answer("1", "11.01");
    EXPECT_FALSE(fileWritten());
}

TEST_F(PrintMarginsTest, BelowZeroEndsTheDialogAndZeroIsAccepted)
{
    answer("-0.01", "1");
    EXPECT_FALSE(fileWritten());
    answer("0", "0");
    ASSERT_TRUE(fileWritten());
    EXPECT_EQ(folder.readFile("printmargin.3"), "0\n0\n");
}

TEST_F(PrintMarginsTest, TextAfterTheNumberIsIgnoredAndTextAloneIsZero)
{
    answer("1.25 inches", "abc");
    EXPECT_EQ(margins.top(), 1800);
    EXPECT_EQ(margins.left(), 0);
    EXPECT_EQ(folder.readFile("printmargin.3"), "1800\n0\n");
}

TEST_F(PrintMarginsTest, RoundingIsToTheNearestTwip)
{
    answer("0.0007", "0.0003"); // 1.008 and 0.432 twips
    EXPECT_EQ(margins.top(), 1);
    EXPECT_EQ(margins.left(), 0);
}

TEST_F(PrintMarginsTest, AThirdOfAnInchRoundsUpWhereCuttingOffWouldLoseATwip)
{
    answer(".333", ".6666"); // 479.52 and 959.904 twips
    EXPECT_EQ(margins.top(), 480);
    EXPECT_EQ(margins.left(), 960);
    EXPECT_EQ(folder.readFile("printmargin.3"), "480\n960\n");
    answer(".3331", ".0003"); // 479.664 and 0.432 twips
    EXPECT_EQ(margins.top(), 480);
    EXPECT_EQ(margins.left(), 0);
}

TEST_F(PrintMarginsTest, CancellingTheLeftMarginKeepsTheTopInMemoryOnlyUntilTheNextRead)
{
    folder.writeFile("printmargin.3", "100\n200\n");
    answer("2", "");
    EXPECT_EQ(margins.top(), 2880);
    EXPECT_EQ(folder.readFile("printmargin.3"), "100\n200\n");
    margins.read(dialogs);
    EXPECT_EQ(margins.top(), 100);
}

} // namespace
