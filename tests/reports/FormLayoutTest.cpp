#include "reports/FormLayout.h"
#include "reports/LayoutRecords.h"
#include "support/DataFolder.h"
#include "support/FakeDialogs.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace {

class FormLayoutTest : public ::testing::Test {
protected:
    DataFolder folder;
    FakeDialogs dialogs;
    FormLayout layout;

    // A header and `elements` records, element N at (N/10, N/100) inches.
    static QByteArray records(int elements)
    {
        QByteArray text = "\"1099-NEC 2026\",0.25,0.5,3.5,7\n";
        for (int i = 1; i <= elements; ++i)
            text +=
                QStringLiteral("\"E%1\",%2,%3\n").arg(i).arg(i / 10.0).arg(i / 100.0).toLatin1();
        return text;
    }
    FormLayout::Outcome load(const QByteArray &contents)
    {
        folder.writeFile("1099nec.lof", contents);
        return layout.load("1099nec.lof", dialogs);
    }
};

TEST_F(FormLayoutTest, HeaderAndElementsAreReadIntoTextAndTwips)
{
    ASSERT_EQ(load(records(3)), FormLayout::Outcome::Loaded);
    EXPECT_EQ(dialogs.count(), 0);
    EXPECT_EQ(layout.text[0], "1099-NEC 2026");
    EXPECT_EQ(layout.x[0], 360);
    EXPECT_EQ(layout.y[0], 720);
    EXPECT_FLOAT_EQ(layout.formSpacing, 3.5f);
    EXPECT_EQ(layout.formSpacingTwips, 5040);
    EXPECT_DOUBLE_EQ(layout.extra, 7.0);
    EXPECT_EQ(layout.text[2], "E2");
    EXPECT_EQ(layout.x[2], 288);
    EXPECT_EQ(layout.y[3], 43);
    EXPECT_FLOAT_EQ(layout.xInches[2], 0.2f);
    EXPECT_EQ(layout.lastIndex, 3);
}

TEST_F(FormLayoutTest, TwoAndAHalfInchesAre3600TwipsAndPointThreeIs432)
{
    ASSERT_EQ(load("\"H\",0,0,1,0\n\"A\",0.3,2.5\n"), FormLayout::Outcome::Loaded);
    EXPECT_EQ(layout.y[1], 3600);
    EXPECT_EQ(layout.x[1], 432);
    EXPECT_EQ(FormLayout::toTwips(2.5f), 3600);
    EXPECT_EQ(FormLayout::toTwips(0.3f), 432);
    // Truncated toward zero, not rounded: a hair under 1 inch is 1439.
    EXPECT_EQ(FormLayout::toTwips(0.9999f), 1439);
    EXPECT_EQ(FormLayout::toTwips(-0.5f), -720);
}

TEST_F(FormLayoutTest, ExactlyOneHundredRecordsLoadWithoutAMessage)
{
    ASSERT_EQ(load(records(99)), FormLayout::Outcome::Loaded);
    EXPECT_EQ(dialogs.count(), 0);
    EXPECT_EQ(layout.lastIndex, 99);
    EXPECT_EQ(layout.text[99], "E99");
}

TEST_F(FormLayoutTest, TheHundredAndFirstRecordGivesTheLimitMessage)
{
    EXPECT_EQ(load(records(100)), FormLayout::Outcome::TooLong);
    ASSERT_NE(dialogs.last(), nullptr);
    EXPECT_EQ(dialogs.last()->text, "Limit of 100 elements exceeded.\nCall Velmora Data.");
    EXPECT_EQ(dialogs.last()->title, "Uh-oh...");
    EXPECT_EQ(dialogs.last()->icon, Dialogs::Icon::Critical);
    // What was read stays loaded.
    EXPECT_EQ(layout.text[100], "E100");
    EXPECT_EQ(layout.x[100], 14400);
}

TEST_F(FormLayoutTest, AMissingFileIsNamedWithTheTwoAdviceLines)
{
    EXPECT_EQ(layout.load("1099nec.lof", dialogs), FormLayout::Outcome::Missing);
    ASSERT_NE(dialogs.last(), nullptr);
    EXPECT_EQ(dialogs.last()->text,
              "The 1099nec.lof layout file is missing.\r\nUse the Adjust 1099 Forms printing "
              "option \r\nto create a new file from the SYStem file.");
    EXPECT_EQ(dialogs.last()->title, "Oops...");
    EXPECT_EQ(dialogs.last()->icon, Dialogs::Icon::Information);
}

TEST_F(FormLayoutTest, AnEmptyNameDoesNothing)
{
    EXPECT_EQ(layout.load("   ", dialogs), FormLayout::Outcome::Missing);
    EXPECT_EQ(dialogs.count(), 0);
}

TEST_F(FormLayoutTest, AShorterLayoutLeavesTheLaterElementsOfALongerOne)
{
    ASSERT_EQ(load(records(10)), FormLayout::Outcome::Loaded);
    ASSERT_EQ(load(records(4)), FormLayout::Outcome::Loaded);
    EXPECT_EQ(layout.text[9], "E9");
    // 0.9 inches in single precision is a hair under, and twips are truncated: 1295.
    EXPECT_EQ(layout.x[9], 1295);
    // The element after the last one read is not empty, so the count stays at the records read.
    EXPECT_EQ(layout.lastIndex, 5);
}

TEST_F(FormLayoutTest, QuotedTextsMayHoldCommasAndValuesRunAcrossLines)
{
    ASSERT_EQ(load("\"Payer, Inc.\",0,0\n3,1\n\"A, B\" , 1 \n 2\n"), FormLayout::Outcome::Loaded);
    EXPECT_EQ(layout.text[0], "Payer, Inc.");
    EXPECT_EQ(layout.formSpacingTwips, 4320);
    EXPECT_EQ(layout.text[1], "A, B");
    EXPECT_EQ(layout.x[1], 1440);
    EXPECT_EQ(layout.y[1], 2880);
}

TEST_F(FormLayoutTest, ATextWhereANumberBelongsStopsTheLoadAndKeepsThePreviousLayout)
{
    ASSERT_EQ(load(records(3)), FormLayout::Outcome::Loaded);
    EXPECT_EQ(load("\"H\",1,1,9,0\n\"A\",one,2\n"), FormLayout::Outcome::Malformed);
    ASSERT_NE(dialogs.last(), nullptr);
    EXPECT_TRUE(dialogs.last()->text.contains("1099nec.lof")) << dialogs.last()->text.toStdString();
    EXPECT_TRUE(dialogs.last()->text.contains("line 2 has \"one\" where a number belongs"))
        << dialogs.last()->text.toStdString();
    EXPECT_EQ(layout.text[0], "1099-NEC 2026");
    EXPECT_EQ(layout.formSpacingTwips, 5040);
    EXPECT_EQ(layout.text[1], "E1");
}

TEST_F(FormLayoutTest, AnUnclosedQuoteIsReportedByLine)
{
    EXPECT_EQ(load("\"H\",1,1,9,0\n\"A,1,2\n"), FormLayout::Outcome::Malformed);
    ASSERT_NE(dialogs.last(), nullptr);
    EXPECT_TRUE(dialogs.last()->text.contains("line 2 opens a quote it never closes"));
}

TEST_F(FormLayoutTest, AnEmptyFileIsReportedAndChangesNothing)
{
    ASSERT_EQ(load(records(2)), FormLayout::Outcome::Loaded);
    EXPECT_EQ(load(""), FormLayout::Outcome::Malformed);
    EXPECT_TRUE(dialogs.last()->text.contains("holds no elements"));
    EXPECT_EQ(layout.lastIndex, 2);
}

TEST_F(FormLayoutTest, ARecordCutOffAtTheEndIsReported)
{
    EXPECT_EQ(load("\"H\",1,1,9,0\n\"A\",1\n"), FormLayout::Outcome::Malformed);
    EXPECT_TRUE(dialogs.last()->text.contains("ends in the middle of element 1"));
}

TEST_F(FormLayoutTest, ABinaryFileIsReportedNotLoaded)
{
    QByteArray binary;
    for (int i = 0; i < 4096; ++i)
        binary.append(static_cast<char>((i * 7919) % 256));
    EXPECT_EQ(load(binary), FormLayout::Outcome::Malformed);
    EXPECT_EQ(dialogs.count(), 1);
}

// Hostile files: random bytes and random edits of a good layout never crash the reader, and
// every load either succeeds or says why.
TEST_F(FormLayoutTest, RandomAndMangledFilesNeverCrashTheReader)
{
    QRandomGenerator random(20261123);
    const QByteArray good = records(30);
    const char alphabet[] = "\",\n\r 0123456789.-+eE\tAx\0\xff";
    int loaded = 0, refused = 0;
    for (int round = 0; round < 3000; ++round) {
        QByteArray text = good;
        if (round % 3 == 0) {
            text.resize(random.bounded(600));
            for (char &c : text)
                c = static_cast<char>(random.bounded(256));
        } else {
            for (int edits = random.bounded(1, 8); edits > 0; --edits) {
                const int at = random.bounded(static_cast<int>(text.size()) + 1);
                const char c = alphabet[random.bounded(static_cast<int>(sizeof alphabet - 1))];
                switch (random.bounded(3)) {
                case 0:
                    text.insert(at, c);
                    break;
                case 1:
                    text.remove(at, 1);
                    break;
                default:
                    text.truncate(at);
                }
            }
        }
        const int before = dialogs.count();
        const FormLayout::Outcome outcome =
            layout.loadText("fuzz.lof", QString::fromLatin1(text), dialogs);
        if (outcome == FormLayout::Outcome::Loaded) {
            ++loaded;
            EXPECT_EQ(dialogs.count(), before);
            EXPECT_GE(layout.lastIndex, -1);
            EXPECT_LE(layout.lastIndex, 100);
        } else {
            ++refused;
            EXPECT_EQ(dialogs.count(), before + 1);
        }
    }
    std::printf("3000 layouts: %d loaded, %d refused with a message\n", loaded, refused);
    EXPECT_GT(loaded, 0);
    EXPECT_GT(refused, 0);
}

TEST(LayoutRecordsTest, BlankLinesAreSkippedAndEmptyValuesKept)
{
    LayoutRecords values(QStringLiteral("a,,b\n\n   \n\"c\"  junk,d"));
    EXPECT_TRUE(values.error().isEmpty());
    QStringList read;
    while (!values.atEnd())
        read << *values.next();
    EXPECT_EQ(read, (QStringList{"a", "", "b", "c", "d"}));
}

} // namespace
