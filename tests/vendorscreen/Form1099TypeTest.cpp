#include "vendorscreen/Form1099Type.h"
#include "support/VendorScreen.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

namespace {

const QString allowed = QStringLiteral("0=None, 1=1099-MISC, 2=1099-INT, 3=1099-DIV or 5=1099-NEC");

class Form1099TypeTest : public VendorScreen {
protected:
    QLabel *name() const { return module.window->findChild<QLabel *>("lbl1099name"); }
    // Types a 1099 type over vendor 100's in Modify and saves.
    void saveType(const QString &typed)
    {
        lookup(0, "100");
        c().cmdmodify->click();
        typeAndSave(typed);
    }
    // Types over the 1099 type of the vendor being modified and saves.
    void typeAndSave(const QString &typed)
    {
        c().Text1[11]->setFocus();
        c().Text1[11]->selectAll();
        QTest::keyClicks(c().Text1[11], typed);
        c().cmdsave->click();
    }
};

TEST_F(Form1099TypeTest, TheKindsNameStandsBesideTheFieldAndTheFieldKeepsTheCode)
{
    ASSERT_NE(name(), nullptr);
    EXPECT_EQ(name()->text(), ""); // nothing on screen yet
    lookup(0, "100");
    EXPECT_EQ(field(11), "1");
    EXPECT_EQ(name()->text(), "1099-MISC");
    lookup(0, "251");
    EXPECT_EQ(field(11), "5");
    EXPECT_EQ(name()->text(), "1099-NEC");
    lookup(0, "250");
    EXPECT_EQ(name()->text(), "None");
    // Beside it, on the same row, to its right.
    const QRect box = c().Text1[11]->geometry();
    EXPECT_GE(name()->geometry().left(), box.right());
    EXPECT_TRUE(name()->geometry().intersects(QRect(0, box.top(), 10000, box.height())));
}

TEST_F(Form1099TypeTest, TheNameFollowsWhatIsTyped)
{
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[11]->setFocus();
    c().Text1[11]->selectAll();
    QTest::keyClicks(c().Text1[11], "2");
    EXPECT_EQ(name()->text(), "1099-INT");
    QTest::keyClick(c().Text1[11], Qt::Key_Backspace);
    QTest::keyClicks(c().Text1[11], "3");
    EXPECT_EQ(name()->text(), "1099-DIV");
    QTest::keyClick(c().Text1[11], Qt::Key_Backspace);
    QTest::keyClicks(c().Text1[11], "4");
    EXPECT_EQ(name()->text(), "not a 1099 type");
    EXPECT_EQ(vendorColumn(100, "vend1099type").toInt(), 1);
}

TEST_F(Form1099TypeTest, ASevenIsRefusedAtSaveWithTheAllowedValuesAndNothingIsWritten)
{
    saveType("7");
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.last()->text,
              "1099 Type must be one of " + allowed + "; \"7\" is not one. Nothing was saved.");
    EXPECT_EQ(vendorColumn(100, "vend1099type").toInt(), 1);
    EXPECT_EQ(module.window->state().modifyFlag, 1);
    EXPECT_EQ(field(11), "7");
    EXPECT_EQ(QApplication::focusWidget(), c().Text1[11]);
    EXPECT_TRUE(c().cmdsave->isEnabled());
}

TEST_F(Form1099TypeTest, AnXIsRefusedAtSaveWithTheAllowedValues)
{
    saveType("x");
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.last()->text,
              "1099 Type must be one of " + allowed + "; \"x\" is not one. Nothing was saved.");
    EXPECT_EQ(vendorColumn(100, "vend1099type").toInt(), 1);
    EXPECT_EQ(module.window->state().modifyFlag, 1);
}

TEST_F(Form1099TypeTest, FourAndSixAreRefusedWhileFiveIsSaved)
{
    lookup(0, "100");
    c().cmdmodify->click();
    for (const char *refused : {"4", "6"}) {
        module.dialogs.shown.clear();
        typeAndSave(QString::fromLatin1(refused));
        ASSERT_EQ(module.dialogs.count(), 1) << refused;
        EXPECT_TRUE(module.dialogs.last()->text.startsWith("1099 Type must be one of")) << refused;
        EXPECT_EQ(vendorColumn(100, "vend1099type").toInt(), 1) << refused;
    }
    module.dialogs.shown.clear();
    typeAndSave("5");
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(vendorColumn(100, "vend1099type").toInt(), 5);
}

TEST_F(Form1099TypeTest, EveryKnownKindIsSaved)
{
    for (const char *kind : {"0", "1", "2", "3", "5"}) {
        saveType(QString::fromLatin1(kind));
        EXPECT_EQ(module.dialogs.count(), 0) << kind;
        EXPECT_EQ(vendorColumn(100, "vend1099type").toString(), QString::fromLatin1(kind));
    }
}

TEST(Form1099Codes, TextIsReadAsACodeOnlyWhenItIsOne)
{
    EXPECT_EQ(Form1099Type::codeOf(""), 0);
    EXPECT_EQ(Form1099Type::codeOf(" 2 "), 2);
    EXPECT_EQ(Form1099Type::codeOf("05"), 5);
    EXPECT_EQ(Form1099Type::codeOf("4"), std::nullopt);
    EXPECT_EQ(Form1099Type::codeOf("7"), std::nullopt);
    EXPECT_EQ(Form1099Type::codeOf("x"), std::nullopt);
    EXPECT_EQ(Form1099Type::codeOf("2x"), std::nullopt);
    EXPECT_EQ(Form1099Type::codeOf("-1"), std::nullopt);
    EXPECT_EQ(Form1099Type::allowedCodes(), allowed);
}

} // namespace
