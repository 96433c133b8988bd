#include "AdjusterFixture.h"

#include "support/PdfWords.h"

#include <QFileInfo>

namespace {

const char *const layoutFiles[] = {"1099misc.lof", "1099int.lof", "1099div.lof", "1099nec.lof"};

// The shipped 1099-NEC layout with element 11 (the recipient's name) at X.
QByteArray necWithNameAcross(const QByteArray &x)
{
    QByteArray bytes = AdjusterFixture::shipped("1099nec.lof");
    bytes.replace("\"Recipient's name\",0.1,", "\"Recipient's name\"," + x + ",");
    return bytes;
}

} // namespace

using AdjusterProgram = AdjusterFixture;

TEST_F(AdjusterProgram, EveryShippedLayoutIsSavedByteForByteWhenNothingIsChanged)
{
    for (const char *name : layoutFiles) {
        const QByteArray shipped = AdjusterFixture::shipped(name);
        ASSERT_FALSE(shipped.isEmpty()) << name;
        write(name, shipped);
        const Run result = run({"--set", name});
        EXPECT_EQ(result.exitCode, 0) << name << ": " << result.err.toStdString();
        EXPECT_EQ(bytesOf(name), shipped) << name;
    }
}

TEST_F(AdjusterProgram, AMissingLayoutIsMadeFromTheInstalledSystemCopy)
{
    const Run result = run({"--check", "1099int.lof"});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("1099int.lof was missing; made from the system copy"))
        << result.out.toStdString();
    EXPECT_EQ(bytesOf("1099int.lof"), shipped("1099int.lof"));
    EXPECT_FALSE(QFileInfo::exists(path("1099nec.lof")));
}

TEST_F(AdjusterProgram, MovingAnElementChangesOnlyItsLine)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    const Run result = run({"--set", "1099nec.lof", "11=1,1.85"});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    QByteArray expected = shipped("1099nec.lof");
    expected.replace("\"Recipient's name\",0.1,1.6\n", "\"Recipient's name\",1,1.85\n");
    EXPECT_NE(expected, shipped("1099nec.lof"));
    EXPECT_EQ(bytesOf("1099nec.lof"), expected);
}

TEST_F(AdjusterProgram, AMalformedLayoutIsNamedWithWhatIsWrongAndLeftAsItIs)
{
    const QByteArray malformed = "\"SYSTEM NEC\",0.25,0.25,3.66,0\n\"Box 1\",abc,0.75\n";
    write("1099nec.lof", malformed);
    for (const QStringList &arguments :
         {QStringList{"--set", "1099nec.lof", "1=1,1"}, QStringList{"--check", "1099nec.lof"},
          QStringList{"--test-page", "1099nec.lof"}}) {
        const Run result = run(arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(result.err.contains("1099nec.lof cannot be used: line 2 has \"abc\" where a "
                                        "number belongs.\nNothing was changed."))
            << result.err.toStdString();
        EXPECT_EQ(bytesOf("1099nec.lof"), malformed);
    }
}

TEST_F(AdjusterProgram, ALayoutWithAnElementOffThePaperIsNamedAndNotSaved)
{
    const QByteArray off = necWithNameAcross("8.25");
    write("1099nec.lof", off);
    const Run result = run({"--set", "1099nec.lof", "1=3.9,0.75"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.err.contains(
        "1099nec.lof prints off the paper:\nElement 11 (Recipient's name) prints 8.50 inches "
        "across on the first form, beyond the 8.5-inch width of the paper.\nNothing was changed."))
        << result.err.toStdString();
    EXPECT_EQ(bytesOf("1099nec.lof"), off);
    // A hundredth of an inch to the left it lands on the paper.
    write("1099nec.lof", necWithNameAcross("8.24"));
    EXPECT_EQ(run({"--check", "1099nec.lof"}).exitCode, 0);
}

TEST_F(AdjusterProgram, AMoveOffThePaperIsRefusedAndNothingChanged)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    const Run result = run({"--set", "1099nec.lof", "2=0.2,0.3", "11=0.2,3.5"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.err.contains("Element 11 (Recipient's name) prints 11.07 inches down on "
                                    "the third form, below the 11-inch length of the paper."))
        << result.err.toStdString();
    EXPECT_EQ(bytesOf("1099nec.lof"), shipped("1099nec.lof"));
}

TEST_F(AdjusterProgram, ANonNumericPositionIsRefusedAndNothingChanged)
{
    write("1099misc.lof", shipped("1099misc.lof"));
    for (const char *word : {"22=abc,2", "22=1,", "22=1", "spacing=wide", "spacing=0", "99=1,1"}) {
        const Run result = run({"--set", "1099misc.lof", "3=4,0.6", word});
        EXPECT_EQ(result.exitCode, 2) << word;
        EXPECT_TRUE(result.err.endsWith("Nothing was changed.")) << result.err.toStdString();
        EXPECT_EQ(bytesOf("1099misc.lof"), shipped("1099misc.lof")) << word;
    }
    EXPECT_TRUE(run({"--set", "1099misc.lof", "22=abc,2"})
                    .err.contains("\"22=abc,2\" does not give X and Y as numbers of inches, like "
                                  "11=1.25,2."));
    EXPECT_TRUE(run({"--set", "1099misc.lof", "99=1,1"})
                    .err.contains("The layout has no element 99; its elements are 0 to 25."));
}

TEST_F(AdjusterProgram, AFileThatIsNoLayoutFileIsNeitherReadNorWritten)
{
    write("ap.mdb", "SQLite format 3");
    const Run result = run({"--set", "ap.mdb"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.err.contains("\"ap.mdb\" is not one of the layout files 1099misc.lof, "
                                    "1099int.lof, 1099div.lof, 1099nec.lof."))
        << result.err.toStdString();
    EXPECT_EQ(bytesOf("ap.mdb"), "SQLite format 3");
}

TEST_F(AdjusterProgram, TheTestPagePrintsTheSampleFormsWhereTheRunPrints)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    const Run result = run({"--test-page", "1099nec.lof"}, QStringLiteral(FPRINT_PROGRAM),
                           {"APMASTER_PRINT_PDF=" + path("test.pdf")});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("The test page was written to " + path("test.pdf")))
        << result.out.toStdString();
    const PdfWords words(path("test.pdf"));
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    EXPECT_EQ(words.pages(), 1);
    // The recipient's name: (0.25 + 0.1) inches across, (0.25 + 1.6) down on the first form,
    // 3.66 inches (5270 twips) further on each next one; in points, 20 twips each.
    EXPECT_NE(words.at(0, "SAMPLE", 25.2, 133.2), nullptr) << words.pageText(0).toStdString();
    EXPECT_NE(words.at(0, "SAMPLE", 25.2, 396.7), nullptr);
    EXPECT_NE(words.at(0, "SAMPLE", 25.2, 660.2), nullptr);
    // The amount in box 1: (0.25 + 3.7, 0.25 + 1.2).
    EXPECT_NE(words.at(0, "1234.56", 284.4, 104.4), nullptr);
}
