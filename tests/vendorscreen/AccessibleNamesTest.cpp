#include "support/VendorScreen.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTableView>

namespace {

QString accessibleName(QWidget *w)
{
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(w);
    return face ? face->text(QAccessible::Name) : QStringLiteral("<no interface>");
}

// What a screen reader can reach: a field, button, option, list, box or bar, and not a part
// that Qt builds inside a list or a menu bar.
bool isInput(QWidget *w)
{
    if (w->objectName().startsWith(QLatin1String("qt_")))
        return false;
    for (QWidget *up = w->parentWidget(); up; up = up->parentWidget())
        if (qobject_cast<QAbstractItemView *>(up))
            return false;
    return (qobject_cast<QAbstractButton *>(w) || qobject_cast<QLineEdit *>(w) ||
            qobject_cast<QAbstractItemView *>(w) || qobject_cast<QPlainTextEdit *>(w) ||
            qobject_cast<QProgressBar *>(w)) &&
           !qobject_cast<QHeaderView *>(w);
}

using AccessibleNamesTest = VendorScreen;

TEST_F(AccessibleNamesTest, EveryInputOfTheVendorScreenAndTheLookupPanelHasAName)
{
    int inputs = 0;
    for (QWidget *w : module.window->findChildren<QWidget *>()) {
        if (!isInput(w))
            continue;
        ++inputs;
        EXPECT_FALSE(accessibleName(w).trimmed().isEmpty()) << w->objectName().toStdString();
    }
    // 11 + 5 buttons, 24 fields, 2 sort options, 2 grids, notes, 3 split lists, status line,
    // progress bar; the lookup panel's 7 options, entry and 2 buttons.
    EXPECT_EQ(inputs, 60);
}

TEST_F(AccessibleNamesTest, TheListsTheNotesTheStatusLineAndTheProgressBarCarryTheirCaptions)
{
    const std::pair<QWidget *, const char *> named[] = {
        {c().grid1, "Invoices"},
        {c().grid2, "Checks"},
        {c().notes, "Notes"},
        {c().helpwindow, "Status"},
        {c().passprogress, "Progress of the pass"},
        {c().List1, "Account"},
        {c().List3, "Name"},
        {c().List2, "Amount"},
        {c().lookupinput, "Look up"},
    };
    for (const auto &[w, name] : named)
        EXPECT_EQ(accessibleName(w), name) << w->objectName().toStdString();
}

TEST_F(AccessibleNamesTest, FieldsAreNamedByTheCaptionsBesideThem)
{
    const std::pair<int, const char *> named[] = {
        {0, "Vendor #"},   {1, "Name"},      {2, "Address 1"},      {9, "Contact-1"},
        {11, "1099 Type"}, {12, "G/L Acct"}, {13, "YTD Purchases"},
    };
    for (const auto &[field, name] : named)
        EXPECT_EQ(accessibleName(c().Text1[field]), name) << field;
    for (int i = 0; i < VendorWindow::fieldCount; ++i)
        EXPECT_EQ(accessibleName(c().Text1[i]), c().label1[i]->text().remove('&')) << i;
}

TEST_F(AccessibleNamesTest, ButtonsAndLookupMethodsAreNamedByTheirTexts)
{
    EXPECT_EQ(accessibleName(c().cmdudf), "User fields");
    EXPECT_EQ(accessibleName(c().cmdunpaid), "Unpaid invoices");
    EXPECT_EQ(accessibleName(c().cmdsplit), "Show Split Detail");
    EXPECT_EQ(accessibleName(c().cmdgo), "Go");
    EXPECT_EQ(accessibleName(c().cmdcancellookup), "Cancel");
    const char *methods[] = {"Vendor #", "Vendor Name", "Contact",   "Invoice #",
                             "Check #",  "Product",     "G/L Number"};
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(accessibleName(c().Option1[i]), methods[i]) << i;
    EXPECT_EQ(accessibleName(c().optsort[0]), "Old to new");
}

TEST_F(AccessibleNamesTest, TheListTableIsNamedByTheListItShows)
{
    lookup(0, "100");
    ASSERT_EQ(field(1), "Acme Office Supply");
    c().cmdunpaid->click();
    EXPECT_EQ(accessibleName(c().grid1), "Unpaid Invoices");
    c().cmdpaid->click();
    EXPECT_EQ(accessibleName(c().grid1), "Paid Invoices");
    c().cmdchecks->click();
    EXPECT_EQ(accessibleName(c().grid2), "Checks");
    EXPECT_EQ(accessibleName(c().grid1), "Paid Invoices");
}

TEST_F(AccessibleNamesTest, TabWalksTheScreenAsItIsRead)
{
    QStringList expected;
    for (const char *b : {"cmdadd", "cmdmodify", "cmdsave", "cmddelete", "cmdcancel", "cmdlookup",
                          "cmdprevious", "cmdnext", "cmdudf", "cmdhelp", "cmdexit"})
        expected << b;
    for (int i = 0; i < VendorWindow::fieldCount; ++i)
        expected << QStringLiteral("Text1_%1").arg(i);
    for (const char *b :
         {"cmdunpaid", "cmdpaid", "cmdchecks", "cmdnotes", "cmdsplit", "optsort_0", "optsort_1"})
        expected << b;
    for (int i = 0; i < 7; ++i)
        expected << QStringLiteral("Option1_%1").arg(i);
    for (const char *b : {"lookupinput", "cmdgo", "cmdcancellookup", "grid1", "grid2", "notes",
                          "List1", "List3", "List2"})
        expected << b;

    QStringList walked;
    QWidget *w = c().cmdadd;
    do {
        if (expected.contains(w->objectName()) && !walked.contains(w->objectName()))
            walked << w->objectName();
        w = w->nextInFocusChain();
    } while (w != c().cmdadd);
    EXPECT_EQ(walked, expected);

    // Along the button strip from left to right, and down each column of fields.
    for (int i = 1; i < 11; ++i) {
        QWidget *before = module.window->findChild<QWidget *>(expected[i - 1]);
        QWidget *after = module.window->findChild<QWidget *>(expected[i]);
        EXPECT_LT(before->x(), after->x()) << expected[i].toStdString();
    }
    for (int i = 1; i < VendorWindow::fieldCount; ++i) {
        if (i % 8 == 0)
            EXPECT_GT(c().Text1[i]->x(), c().Text1[i - 1]->x()) << i;
        else
            EXPECT_GT(c().Text1[i]->y(), c().Text1[i - 1]->y()) << i;
    }
}

} // namespace
