#include "support/VendorScreen.h"

#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTest>

namespace {

class ScreenLayoutTest : public VendorScreen {
protected:
    void SetUp() override
    {
        VendorScreen::SetUp();
        module.window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(module.window));
    }
    // A widget's rectangle in the window's coordinates.
    QRect inWindow(const QWidget *w) const
    {
        return QRect(w->mapTo(module.window, QPoint(0, 0)), w->size());
    }
    // The widget the user reaches at the centre of another one (what a click there would hit).
    QWidget *atCentreOf(const QWidget *w) const
    {
        return module.window->childAt(inWindow(w).center());
    }
};

TEST_F(ScreenLayoutTest, TheLookupPanelCoversNoCaptionAndNoVendorField)
{
    ASSERT_TRUE(c().fralookup->isVisible());
    const QRect panel = inWindow(c().fralookup);
    for (int i = 0; i < 24; ++i) {
        EXPECT_FALSE(panel.intersects(inWindow(c().label1[i]))) << "caption " << i;
        EXPECT_FALSE(panel.intersects(inWindow(c().Text1[i]))) << "field " << i;
        EXPECT_EQ(atCentreOf(c().label1[i]), c().label1[i]) << "caption " << i;
    }
    for (QWidget *button :
         {static_cast<QWidget *>(c().cmdunpaid), static_cast<QWidget *>(c().cmdpaid),
          static_cast<QWidget *>(c().cmdchecks), static_cast<QWidget *>(c().cmdnotes),
          static_cast<QWidget *>(c().cmdsplit)})
        EXPECT_FALSE(panel.intersects(inWindow(button))) << button->objectName().toStdString();
}

TEST_F(ScreenLayoutTest, TheSplitPanelLeavesItsButtonToBeClickedAgain)
{
    folder.exec("ap.mdb", "insert into invoices (vendnumber, invnumber, invdate, invamount, "
                          "invstatus, splitgl1, splitamt1) values (100, 'A-1', 20260105, 10, 1, "
                          "5000, 10)");
    lookup(0, "100");
    c().cmdunpaid->click();
    QTest::mouseClick(c().cmdsplit, Qt::LeftButton);
    ASSERT_TRUE(c().frasplit->isVisible());
    EXPECT_FALSE(inWindow(c().frasplit).intersects(inWindow(c().cmdsplit)));
    EXPECT_EQ(atCentreOf(c().cmdsplit), c().cmdsplit);
    // The list's caption and headings stay in sight above the panel.
    EXPECT_GT(inWindow(c().frasplit).top(), inWindow(c().grid1).top() + 20);
    QTest::mouseClick(c().cmdsplit, Qt::LeftButton);
    EXPECT_FALSE(c().frasplit->isVisible());
    EXPECT_EQ(c().cmdsplit->text(), "Show Split Detail");
}

TEST_F(ScreenLayoutTest, EachSplitListHasAHeadingAboveIt)
{
    folder.exec("ap.mdb", "insert into invoices (vendnumber, invnumber, invdate, invamount, "
                          "invstatus, splitgl1, splitamt1) values (100, 'A-1', 20260105, 10, 1, "
                          "5000, 10)");
    lookup(0, "100");
    c().cmdunpaid->click();
    c().cmdsplit->click();
    ASSERT_TRUE(c().frasplit->isVisible());
    const std::pair<QListWidget *, const char *> lists[] = {
        {c().List1, "Account"}, {c().List3, "Name"}, {c().List2, "Amount"}};
    for (const auto &[list, heading] : lists) {
        auto *label = c().frasplit->findChild<QLabel *>(list->objectName() + "heading");
        ASSERT_NE(label, nullptr) << heading;
        EXPECT_EQ(label->text(), heading);
        EXPECT_EQ(label->buddy(), list);
        EXPECT_LE(label->geometry().bottom(), list->geometry().top()) << heading;
        EXPECT_LT(label->geometry().left(), list->geometry().right()) << heading;
        EXPECT_GE(label->geometry().left(), list->geometry().left() - 2) << heading;
    }
}

TEST_F(ScreenLayoutTest, ALongTextShowsItsStartAfterARecall)
{
    const QString email =
        QStringLiteral("wking@benchmark-office-supplies-and-furniture.example.com");
    folder.exec("ap.mdb", "update vendors set email = '" + email + "' where vendnumber = 100");
    lookup(0, "100");
    QLineEdit *box = c().Text1[19];
    ASSERT_EQ(box->text(), email);
    ASSERT_GT(box->fontMetrics().horizontalAdvance(email), box->width());
    EXPECT_EQ(box->cursorPosition(), 0);
    // And the same after Next and Previous bring it back.
    c().cmdnext->click();
    c().cmdprevious->click();
    ASSERT_EQ(c().Text1[19]->text(), email);
    EXPECT_EQ(c().Text1[19]->cursorPosition(), 0);
}

} // namespace

namespace {

TEST_F(ScreenLayoutTest, NotesThatCannotBeEditedAreAsDarkAsEditableOnes)
{
    folder.exec("ap.mdb", "insert into vendnotes (vendnumber, notes) values (100, 'Gate code 42')");
    lookup(0, "100");
    c().cmdnotes->click();
    ASSERT_FALSE(c().notes->isEnabled());
    const QPalette p = c().notes->palette();
    EXPECT_EQ(p.color(QPalette::Disabled, QPalette::Text),
              p.color(QPalette::Active, QPalette::Text));
}

} // namespace
