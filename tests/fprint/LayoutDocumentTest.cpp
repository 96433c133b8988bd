#include "LayoutDocument.h"

#include "reports/FormLayout.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

QByteArray shipped(const QString &name)
{
    QFile file(QDir(QStringLiteral(APMASTER_SYSTEM_LAYOUTS)).filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString problemOf(const QByteArray &bytes)
{
    LayoutDocument document;
    QString why;
    EXPECT_FALSE(document.read(bytes, why));
    return why;
}

QByteArray records(int count)
{
    QByteArray out = "\"CAPTION\",0.25,0.3,3.66,0\n";
    for (int i = 1; i < count; ++i)
        out += "\"E" + QByteArray::number(i) + "\",1,1\n";
    return out;
}

} // namespace

class ShippedLayout : public ::testing::TestWithParam<const char *> {};

TEST_P(ShippedLayout, IsWrittenBackByteForByteWhenNothingChanged)
{
    const QByteArray bytes = shipped(QString::fromLatin1(GetParam()));
    ASSERT_FALSE(bytes.isEmpty());
    LayoutDocument document;
    QString why;
    ASSERT_TRUE(document.read(bytes, why)) << why.toStdString();
    EXPECT_FALSE(document.changed());
    EXPECT_EQ(document.bytes(), bytes);
}

TEST_P(ShippedLayout, IsWrittenInTheSameCharactersWhenAValueIsChangedAndChangedBack)
{
    const QByteArray bytes = shipped(QString::fromLatin1(GetParam()));
    LayoutDocument document;
    QString why;
    ASSERT_TRUE(document.read(bytes, why)) << why.toStdString();
    for (int element = 0; element < document.count(); ++element) {
        const double x = document.element(element).x.value;
        const double y = document.element(element).y.value;
        document.setX(element, x + 0.5);
        document.setY(element, y + 0.5);
        document.setX(element, x);
        document.setY(element, y);
    }
    const double spacing = document.spacing().value;
    document.setSpacing(spacing + 1);
    document.setSpacing(spacing);
    EXPECT_TRUE(document.changed());
    EXPECT_EQ(document.bytes(), bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, ShippedLayout,
    ::testing::Values("1099misc.lof", "1099int.lof", "1099div.lof", "1099nec.lof"),
    [](const auto &info) {
        return QString::fromLatin1(info.param).section('.', 0, 0).toStdString();
    });

TEST(LayoutDocument, AChangedFileKeepsTheOtherValuesAsWrittenAndItsLineEnds)
{
    LayoutDocument document;
    QString why;
    ASSERT_TRUE(document.read("CAPTION , 0.250, 0.30 ,3.660,7\r\n\"Box 1\",3.850,0.75\r\n"
                              "\"Payer\",0.20,0.30\r\n",
                              why))
        << why.toStdString();
    document.setX(2, 0.45);
    EXPECT_EQ(document.bytes(), QByteArray("\"CAPTION\",0.250,0.30,3.660,7\r\n"
                                           "\"Box 1\",3.850,0.75\r\n"
                                           "\"Payer\",0.45,0.30\r\n"));
}

TEST(LayoutDocument, WhatItWritesTheModuleReadsWithTheNewPosition)
{
    LayoutDocument document;
    QString why;
    ASSERT_TRUE(document.read(shipped("1099nec.lof"), why));
    document.setX(11, 1.25);
    document.setY(11, 1.85);
    document.setSpacing(3.7);
    document.setText(2, "LINDQVIST SUPPLY CO., INC.");
    FormLayout layout;
    document.loadInto(layout);
    EXPECT_EQ(layout.x[11], 1800);
    EXPECT_EQ(layout.y[11], 2664);
    EXPECT_EQ(layout.formSpacingTwips, 5328);
    EXPECT_EQ(layout.text[2], "LINDQVIST SUPPLY CO., INC.");
    EXPECT_EQ(layout.lastIndex, 14);
}

TEST(LayoutDocument, AMalformedFileIsRefusedWithWhatIsWrong)
{
    EXPECT_EQ(problemOf("\"SYSTEM NEC\",0.25,0.25,3.66,0\n\"Box 1\",abc,0.75\n"),
              "line 2 has \"abc\" where a number belongs");
    EXPECT_EQ(problemOf("\"SYSTEM NEC,0.25,0.25,3.66,0\n"), "line 1 opens a quote it never closes");
    EXPECT_EQ(problemOf("\"SYSTEM NEC\",0.25,0.25,3.66,0\n\"Box 1\",3.85\n"),
              "it ends in the middle of element 1");
    EXPECT_EQ(problemOf("\n\n"), "it holds no elements");
    EXPECT_EQ(problemOf("\"SYSTEM NEC\",0.25,0.25,inf,0\n"),
              "line 1 has \"inf\" where a number belongs");
}

TEST(LayoutDocument, OneHundredRecordsAreReadAndOneHundredAndOneRefused)
{
    LayoutDocument document;
    QString why;
    EXPECT_TRUE(document.read(records(100), why)) << why.toStdString();
    EXPECT_EQ(document.count(), 100);
    EXPECT_EQ(problemOf(records(101)),
              "it holds more than the 100 elements the 1099 printing reads");
}

TEST(LayoutDocument, TypedInchesAreDecimalNumbersWithAPoint)
{
    const std::pair<const char *, double> good[] = {
        {"1.25", 1.25}, {" 2 ", 2}, {"-0.5", -0.5}, {".75", 0.75}};
    for (const auto &[typed, inches] : good) {
        double read = 99;
        EXPECT_TRUE(LayoutDocument::parseInches(typed, read)) << typed;
        EXPECT_EQ(read, inches) << typed;
    }
    // Past a thousand inches a position is no position on any paper.
    double far = 0;
    EXPECT_TRUE(LayoutDocument::parseInches("-1000", far));
    EXPECT_EQ(far, -1000);
    for (const char *typed : {"abc", "", "1,5", "1.2.3", "nan", "2in", "1000.01", "1e30"}) {
        double read = 99;
        EXPECT_FALSE(LayoutDocument::parseInches(typed, read)) << typed;
        EXPECT_EQ(read, 99) << typed;
    }
}

TEST(LayoutDocument, ATextWithADoubleQuoteOrOutsideTheFilesCharactersIsRefused)
{
    EXPECT_EQ(LayoutDocument::textProblem("O'NEIL & SONS, INC. \u00c9"), "");
    EXPECT_NE(LayoutDocument::textProblem("THE \"BEST\" CO"), "");
    EXPECT_NE(LayoutDocument::textProblem("EURO \u20ac"), "");
    EXPECT_NE(LayoutDocument::textProblem("TWO\nLINES"), "");
}

TEST(LayoutDocument, FileNamesGiveTheFormKindsOfThe1099Runs)
{
    EXPECT_EQ(LayoutDocument::kindOf("1099misc.lof"), 1);
    EXPECT_EQ(LayoutDocument::kindOf("1099int.lof"), 2);
    EXPECT_EQ(LayoutDocument::kindOf("1099div.lof"), 3);
    EXPECT_EQ(LayoutDocument::kindOf("1099nec.lof"), 5);
    EXPECT_EQ(LayoutDocument::kindOf("1099k.lof"), 0);
    EXPECT_EQ(LayoutDocument::formName("1099nec.lof"), "1099-NEC");
}
