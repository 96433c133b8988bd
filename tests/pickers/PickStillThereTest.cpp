// A row another user deleted after the picker made its list is not handed back: the picker asks
// the company once more when a row is picked.
#include "PickerIndex.h"
#include "PickerModel.h"
#include "PickerWindow.h"
#include "StillThere.h"
#include "VendorRows.h"

#include "data/DbError.h"
#include "support/DataFolder.h"

#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

class PickStillThere : public ::testing::Test {
protected:
    DataFolder folder;

    void SetUp() override
    {
        folder.addVendor(100, "Acme Office Supply");
        folder.addVendor(250, "O'Brien Catering");
        folder.addVendor(251, "Northern Lights Printing");
    }
    bool vendorThere(const QString &number) const
    {
        return stillThere(folder.path(), "ap.mdb", "vendors", "vendnumber", number);
    }
};

TEST_F(PickStillThere, AVendorOfTheCompanyIsThereAndOneDeletedByAnotherProgramIsNot)
{
    EXPECT_TRUE(vendorThere("250"));
    EXPECT_EQ(folder.otherProgram("ap.mdb", "delete from vendors where vendnumber = 250"), "");
    EXPECT_FALSE(vendorThere("250"));
    EXPECT_TRUE(vendorThere("251"));
    EXPECT_TRUE(vendorThere("100"));
}

TEST_F(PickStillThere, TextThatIsNoNumberIsNeverThere)
{
    EXPECT_FALSE(vendorThere(""));
    EXPECT_FALSE(vendorThere("abc"));
    EXPECT_FALSE(vendorThere("250' or '1'='1"));
    EXPECT_FALSE(vendorThere("250; drop table vendors; --"));
    EXPECT_EQ(folder.otherProgramRead("ap.mdb", "select count(*) from vendors"), "3");
}

TEST_F(PickStillThere, AnAccountOfTheChartIsThereAndOneDeletedIsNot)
{
    const QString account = folder.otherProgramRead("gl.mdb", "select min(glacctnum) from gl0");
    ASSERT_FALSE(account.isEmpty());
    EXPECT_TRUE(stillThere(folder.path(), "gl.mdb", "gl0", "glacctnum", account));
    EXPECT_EQ(folder.otherProgram("gl.mdb", "delete from gl0 where glacctnum = " + account), "");
    EXPECT_FALSE(stillThere(folder.path(), "gl.mdb", "gl0", "glacctnum", account));
}

TEST_F(PickStillThere, AMissingDatabaseIsReportedNotTakenForAMissingRow)
{
    folder.removeDatabase("ap.mdb");
    EXPECT_THROW(vendorThere("250"), DbError);
}

// The window with the list of the company's vendors, asking the company when a row is picked.
class PickerWindowOverTheCompany : public PickStillThere {
protected:
    QTemporaryDir scratch;
    std::unique_ptr<PickerIndex> index;
    std::unique_ptr<PickerModel> model;
    std::unique_ptr<PickerWindow> window;
    QLineEdit *search = nullptr;

    void open()
    {
        index = std::make_unique<PickerIndex>(scratch.filePath("list.db"), VendorRows::columns());
        VendorRows::load(*index, folder.path());
        index->finish();
        model = std::make_unique<PickerModel>(*index);
        window = std::make_unique<PickerWindow>(
            *model, PickerWindow::Texts{"Find a vendor", "Type", "vendors", "No vendors yet."});
        window->setPickCheck([this](const QString &number) { return vendorThere(number); },
                             "Vendor %1 is gone.");
        window->show();
        search = window->findChild<QLineEdit *>("search");
        ASSERT_NE(search, nullptr);
    }
    QString note() const { return window->findChild<QLabel *>("note")->text(); }
};

TEST_F(PickerWindowOverTheCompany, AVendorDeletedAfterTheListWasMadeIsNotPickedAndTheNoteSaysSo)
{
    open();
    EXPECT_EQ(folder.otherProgram("ap.mdb", "delete from vendors where vendnumber = 250"), "");
    QTest::keyClicks(search, "brien");
    ASSERT_EQ(model->rowCount(), 1); // the list still shows it: it was made before
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->picked(), "");
    EXPECT_EQ(note(), "Vendor 250 is gone.");
    // Another vendor is picked as ever.
    search->clear();
    QTest::keyClicks(search, "northern");
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(window->result(), QDialog::Accepted);
    EXPECT_EQ(window->picked(), "251");
}

TEST_F(PickerWindowOverTheCompany, AVendorStillThereIsPickedAtOnce)
{
    open();
    QTest::keyClicks(search, "brien");
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(window->result(), QDialog::Accepted);
    EXPECT_EQ(window->picked(), "250");
}

} // namespace
