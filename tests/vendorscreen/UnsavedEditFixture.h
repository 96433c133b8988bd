#pragma once

#include "support/VendorScreen.h"

#include <QGroupBox>
#include <QPlainTextEdit>
#include <QTest>

// Vendors side by side in number order as on the demo company: 270 then 288 (270 with a note),
// 4569 with a note and 4605 without one.
class UnsavedEditFixture : public VendorScreen {
protected:
    void addVendors() override
    {
        folder.exec("ap.mdb",
                    "insert into vendors (vendnumber, vendname, vendcontact, vendphone, vendytd, "
                    "vend1099type, vendglacct, vendbal90, vendterms) values "
                    "(270, 'Harbor Freight Lines', 'Ray', '217-555-0270', 0, 0, 5000, 0, '1'), "
                    "(288, 'Keystone Paper', 'Sue', '217-555-0288', 0, 0, 5000, 0, '1'), "
                    "(4569, 'Prairie Electric', 'Lou', '217-555-4569', 0, 0, 5000, 0, '1'), "
                    "(4605, 'Quarry Stone Works', 'Ida', '217-555-4605', 0, 0, 5000, 0, '1')");
        folder.exec("ap.mdb", "insert into vendnotes (vendnumber, notes) values "
                              "(270, 'Pays on the 15th'), (4569, 'Call before delivery')");
    }

    void click(QPushButton *button)
    {
        QTest::mouseClick(button, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    // Types over a field's whole text, as a user selecting it and typing does.
    void typeInto(int field, const QString &text)
    {
        QLineEdit *box = c().Text1[field];
        box->setFocus();
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Backspace);
        QTest::keyClicks(box, text);
    }
    void typeNote(const QString &text)
    {
        c().notes->setFocus();
        QTest::keyClick(c().notes, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClicks(c().notes, text);
    }
    // Vendor 270 in Modify mode with Contact-1 changed to "Ray Dunn" and a note typed.
    void modify270WithContactAndNote()
    {
        lookup(0, "270");
        click(c().cmdmodify);
        typeInto(9, "Ray Dunn");
        click(c().cmdnotes);
        typeNote(" Ask for Ray");
    }
    QString storedNote(int vendor)
    {
        return folder
            .scalar("ap.mdb",
                    QStringLiteral("select notes from vendnotes where vendnumber = %1").arg(vendor))
            .toString();
    }
    int noteRows(int vendor)
    {
        return folder
            .scalar(
                "ap.mdb",
                QStringLiteral("select count(*) from vendnotes where vendnumber = %1").arg(vendor))
            .toInt();
    }
    // The save question, as the fake dialogs recorded it (nullptr when none was asked).
    const FakeDialogs::Shown *saveQuestion() const
    {
        for (const FakeDialogs::Shown &s : module.dialogs.shown)
            if (s.kind == "yesnocancel")
                return &s;
        return nullptr;
    }
    void expectTheSaveQuestion()
    {
        const FakeDialogs::Shown *asked = saveQuestion();
        ASSERT_NE(asked, nullptr);
        EXPECT_EQ(asked->text, "Save the changes to this vendor?");
        EXPECT_EQ(asked->title, "Save Changes?");
        EXPECT_EQ(asked->buttons, (QStringList{"Yes", "No", "Cancel"}));
        EXPECT_EQ(asked->defaultAnswer, Dialogs::Yes);
        EXPECT_EQ(module.dialogs.count("yesnocancel"), 1);
    }
    bool inLookupMode() const
    {
        return c().fralookup->isVisible() && module.window->state().addFlag == 0 &&
               module.window->state().modifyFlag == 0 && field(0).isEmpty();
    }
};
