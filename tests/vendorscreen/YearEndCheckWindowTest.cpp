#include "utilities/YearEndCheckWindow.h"
#include "support/PdfWords.h"
#include "support/VendorScreen.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

namespace {

// The 1099 year-end check window, opened from the Year-end menu of the real vendor screen.
class YearEndCheckWindowTest : public VendorScreen {
protected:
    YearEndCheckWindow *open()
    {
        module.window->action(QStringLiteral("eoy1099check"))->trigger();
        QCoreApplication::processEvents();
        return module.window->findChild<YearEndCheckWindow *>(QStringLiteral("frm1099check"));
    }
    QTableWidget *grid(YearEndCheckWindow *w)
    {
        return w->findChild<QTableWidget *>(QStringLiteral("grdcheck"));
    }
    QString cell(YearEndCheckWindow *w, int row, int column)
    {
        const QTableWidgetItem *item = grid(w)->item(row, column);
        return item ? item->text() : QStringLiteral("(none)");
    }
    void check(YearEndCheckWindow *w, int formIndex, int year)
    {
        w->findChild<QComboBox *>(QStringLiteral("cboform"))->setCurrentIndex(formIndex);
        w->findChild<QSpinBox *>(QStringLiteral("spnyear"))->setValue(year);
        QTest::mouseClick(w->findChild<QPushButton *>(QStringLiteral("cmdcheck")), Qt::LeftButton);
    }
};

TEST_F(YearEndCheckWindowTest, TheYearEndMenuOpensTheCheckForLastYearAndListsFormsAndProblems)
{
    YearEndCheckWindow *w = open();
    ASSERT_NE(w, nullptr);
    EXPECT_TRUE(w->isVisible());
    EXPECT_EQ(w->findChild<QSpinBox *>(QStringLiteral("spnyear"))->value(), 2025);
    check(w, 0, 2025); // 1099-NEC
    ASSERT_EQ(grid(w)->rowCount(), 3);
    EXPECT_EQ(cell(w, 0, 0), "251");
    EXPECT_EQ(cell(w, 0, 1), "Northern Lights Printing");
    EXPECT_EQ(cell(w, 0, 2), "600.00");
    EXPECT_EQ(cell(w, 0, 3), "");
    EXPECT_EQ(cell(w, 1, 0), "251");
    EXPECT_EQ(cell(w, 1, 3), "no tax id");
    EXPECT_EQ(cell(w, 2, 3), "not a US address (state \"ON\", ZIP \"M5V 2T6\")");
    EXPECT_EQ(w->findChild<QLabel *>(QStringLiteral("lblsummary"))->text(),
              "1099-NEC, tax year 2025, threshold $600 or more: 1 vendor gets the form, 600.00 "
              "in all; 2 problems.");
}

TEST_F(YearEndCheckWindowTest, TheThresholdOf2026LeavesOutAMiscVendorUnderTwoThousand)
{
    YearEndCheckWindow *w = open();
    ASSERT_NE(w, nullptr);
    check(w, 1, 2025); // 1099-MISC: vendor 100 with 1234.50
    ASSERT_GE(grid(w)->rowCount(), 1);
    EXPECT_EQ(cell(w, 0, 0), "100");
    EXPECT_EQ(cell(w, 0, 2), "1,234.50");
    EXPECT_EQ(w->findChild<QLabel *>(QStringLiteral("lblsummary"))->text(),
              "1099-MISC, tax year 2025, threshold $600 or more: 1 vendor gets the form, 1,234.50 "
              "in all; 1 problem.");
    check(w, 1, 2026);
    EXPECT_EQ(grid(w)->rowCount(), 0);
    EXPECT_EQ(w->findChild<QLabel *>(QStringLiteral("lblsummary"))->text(),
              "1099-MISC, tax year 2026, threshold $2,000 or more: 0 vendors get the form, 0.00 "
              "in all; 0 problems.");
}

TEST_F(YearEndCheckWindowTest, EnterOnARowShowsItsVendorOnTheVendorScreen)
{
    lookup(0, "100");
    ASSERT_EQ(field(0), "100");
    YearEndCheckWindow *w = open();
    ASSERT_NE(w, nullptr);
    check(w, 0, 2025);
    ASSERT_EQ(grid(w)->rowCount(), 3);
    grid(w)->setCurrentCell(2, 1);
    grid(w)->setFocus();
    QTest::keyClick(grid(w), Qt::Key_Return);
    QTRY_COMPARE(field(0), QStringLiteral("251"));
    EXPECT_EQ(field(1), "Northern Lights Printing");
    // The window's buttons were not pressed by that Enter: the list is unchanged.
    EXPECT_EQ(grid(w)->rowCount(), 3);
}

TEST_F(YearEndCheckWindowTest, ARowDoesNotReplaceAVendorBeingEdited)
{
    YearEndCheckWindow *w = open();
    ASSERT_NE(w, nullptr);
    check(w, 0, 2025);
    c().cmdadd->click();
    QCoreApplication::processEvents();
    const QString shownBefore = field(0);
    module.dialogs.shown.clear();
    emit w->vendorChosen(251);
    ASSERT_EQ(module.dialogs.shown.size(), 1u);
    EXPECT_EQ(module.dialogs.shown[0].text, "Save or cancel the vendor being edited first.");
    EXPECT_EQ(field(0), shownBefore);
}

TEST_F(YearEndCheckWindowTest, PrintWritesTheCheckAsTheCommandDoes)
{
    QTemporaryDir out;
    const QString pdf = out.filePath("check.pdf");
    qputenv("APMASTER_PRINT_PDF", pdf.toLocal8Bit());
    YearEndCheckWindow *w = open();
    ASSERT_NE(w, nullptr);
    check(w, 0, 2025);
    QTest::mouseClick(w->findChild<QPushButton *>(QStringLiteral("cmdprint")), Qt::LeftButton);
    qunsetenv("APMASTER_PRINT_PDF");
    const PdfWords words(pdf);
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    const QString text = words.pageText(0);
    EXPECT_TRUE(text.contains("Year-end check: 1099-NEC, tax year 2025, threshold $600 or more"))
        << text.toStdString();
    // The vendor's row: its name and amount on one line.
    bool sameLine = false;
    for (const PdfWord *name : words.find(0, "Northern"))
        for (const PdfWord *amount : words.find(0, "600.00"))
            sameLine =
                sameLine || (std::abs(name->yMin - amount->yMin) < 1 && amount->xMin > name->xMax);
    EXPECT_TRUE(sameLine) << text.toStdString();
    EXPECT_TRUE(text.contains("251 Northern Lights Printing: no tax id"));
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text, "The check was written to " + pdf + ".");
}

TEST_F(YearEndCheckWindowTest, PrintIntoTheCompanysDatabaseIsRefusedAndLeavesItAsItWas)
{
    const QString database = QDir(folder.path()).absoluteFilePath("ap.mdb");
    const auto bytes = [&database] {
        QFile file(database);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    };
    YearEndCheckWindow *w = open();
    ASSERT_NE(w, nullptr);
    check(w, 0, 2025);
    const QByteArray before = bytes();
    qputenv("APMASTER_PRINT_PDF", database.toLocal8Bit());
    QTest::mouseClick(w->findChild<QPushButton *>(QStringLiteral("cmdprint")), Qt::LeftButton);
    qunsetenv("APMASTER_PRINT_PDF");
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_TRUE(module.dialogs.last()->text.startsWith("The output file " + database + " is a"))
        << module.dialogs.last()->text.toStdString();
    EXPECT_TRUE(module.dialogs.last()->text.endsWith("Nothing was printed."));
    EXPECT_EQ(bytes(), before);
}

} // namespace
