#include "common/Clipboard.h"
#include "frmmisc/ReportRecord.h"
#include "frmmisc/UserFieldsFixture.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace {

// The report runner and the three layouts in the data folder; the runner only notes its start.
class UserFieldsReportTest : public UserFieldsFixture {
protected:
    void SetUp() override
    {
        UserFieldsFixture::SetUp();
        folder.writeProgram("cryprint.exe", "echo started >> runner.txt");
        for (const char *file : {"miscinfo1v.rpt", "miscinfo1m.rpt", "miscinfo1e.rpt"})
            folder.writeFile(file, "report");
    }
    void number(UserFieldsWindow *w, int field, const QString &position)
    {
        w->controls().txtsort[field]->setText(position);
    }
    void print(UserFieldsWindow *w)
    {
        w->controls().cmdprint->click();
        QCoreApplication::processEvents();
    }
    QString record() const { return folder.file("local/miscreport-demo.mdb"); }
    QString request(const QString &layout) const
    {
        return "Crystal~\nReportFileName=" + layout +
               "~\nWindowTitle=~\nMarginTop=0~\nMarginLeft=0~\nDataFiles(5)=" + record() + "~";
    }
    QString clipboard() const { return module.services.clipboard.text(); }
    bool runnerStarted()
    {
        return QTest::qWaitFor([&] { return folder.readFile("runner.txt") == "started\n"; });
    }
};

TEST_F(UserFieldsReportTest, NothingNumberedSaysNoFieldsSelectedAndPrintsNothing)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    module.services.clipboard.setText("before");
    number(w, 0, "30");
    number(w, 1, "abc");
    print(w);
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.last()->text, "No fields selected for the report");
    EXPECT_EQ(module.dialogs.last()->title, "Oops");
    EXPECT_EQ(clipboard(), "before");
    EXPECT_FALSE(QFile::exists(record()));
}

TEST_F(UserFieldsReportTest, TheSingleAccountRequestIsWordForWord)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    number(w, 1, "1");
    print(w);
    EXPECT_EQ(clipboard(), request("miscinfo1v.rpt"));
    EXPECT_EQ(w->reportRecordPath(), record());
    EXPECT_TRUE(runnerStarted());
    EXPECT_EQ(module.dialogs.count(), 0);
}

TEST_F(UserFieldsReportTest, TheAllAccountsRequestIsWordForWordToo)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    w->controls().mnuall->trigger();
    number(w, 1, "1");
    print(w);
    EXPECT_EQ(clipboard(), request("miscinfo1v.rpt"));
    EXPECT_TRUE(runnerStarted());
}

TEST_F(UserFieldsReportTest, FieldsGoIntoTheRecordByPositionTiesInFieldOrderThirtyNever)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    number(w, 29, "1"); // Last field
    number(w, 2, "2");  // Sales rep
    number(w, 0, "2");  // Insurance expiry, before Sales rep: field order
    number(w, 1, "30"); // never printed
    number(w, 3, "x");  // not a number
    number(w, 4, "29"); // the last position looked at
    w->controls().txtinfo[4]->setText("fifth");
    print(w);
    EXPECT_EQ(recordColumn(record(), "acctid"), QStringList{"100"});
    EXPECT_EQ(recordColumn(record(), "fieldcount"), QStringList{"4"});
    EXPECT_EQ(recordColumn(record(), "miscdesc1"), QStringList{"Last field"});
    EXPECT_EQ(recordColumn(record(), "miscvalue1"), QStringList{"thirty"});
    EXPECT_EQ(recordColumn(record(), "miscdesc2"), QStringList{"Insurance expiry"});
    EXPECT_EQ(recordColumn(record(), "miscvalue2"), QStringList{"06/30/2027"});
    EXPECT_EQ(recordColumn(record(), "miscdesc3"), QStringList{"  Sales rep  "});
    EXPECT_EQ(recordColumn(record(), "miscvalue3"), QStringList{"Bill"});
    EXPECT_EQ(recordColumn(record(), "miscdesc4"), QStringList{""});
    EXPECT_EQ(recordColumn(record(), "miscvalue4"), QStringList{"fifth"});
    EXPECT_EQ(recordColumn(record(), "miscdesc5"), QStringList{""});
    EXPECT_EQ(recordColumn(record(), "miscvalue5"), QStringList{""});
}

TEST_F(UserFieldsReportTest, AllAccountsModeHoldsEveryAccountWithTheShownValuesForTheRecalledOne)
{
    UserFieldsWindow *w = openFor("300");
    ASSERT_NE(w, nullptr);
    w->controls().mnuall->trigger();
    number(w, 0, "1");
    w->controls().txtinfo[0]->setText("shown, unsaved");
    print(w);
    EXPECT_EQ(recordColumn(record(), "acctid"), (QStringList{"100", "250", "300"}));
    EXPECT_EQ(recordColumn(record(), "miscdesc1"),
              (QStringList{"Insurance expiry", "Insurance expiry", "Insurance expiry"}));
    EXPECT_EQ(recordColumn(record(), "miscvalue1"),
              (QStringList{"06/30/2027", "12/31/2026", "shown, unsaved"}));
}

TEST_F(UserFieldsReportTest, SingleAccountModeHoldsOnlyTheRecalledAccount)
{
    UserFieldsWindow *w = openFor("250");
    ASSERT_NE(w, nullptr);
    number(w, 1, "1");
    print(w);
    EXPECT_EQ(recordColumn(record(), "acctid"), QStringList{"250"});
    EXPECT_EQ(recordColumn(record(), "miscvalue1"), QStringList{"No"});
}

TEST_F(UserFieldsReportTest, AnotherReportWritesTheRecordAfresh)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    w->controls().mnuall->trigger();
    number(w, 0, "1");
    print(w);
    ASSERT_EQ(recordColumn(record(), "acctid").size(), 2);
    w->controls().mnusingle->trigger();
    print(w);
    EXPECT_EQ(recordColumn(record(), "acctid"), QStringList{"100"});
}

TEST_F(UserFieldsReportTest, AMembersRecordCarriesTheMemberHeadingFields)
{
    UserFieldsWindow *w = openWith("ABC1001");
    ASSERT_NE(w, nullptr);
    number(w, 0, "1");
    print(w);
    EXPECT_EQ(clipboard(), request("miscinfo1m.rpt"));
    const std::pair<const char *, const char *> expected[] = {{"lname", "Jensen"},
                                                              {"fname", "Harold"},
                                                              {"fullname1", "Harold Jensen"},
                                                              {"addr1a", "1200 North Fifth"},
                                                              {"addr1b", "Unit B"},
                                                              {"city1", "Springfield"},
                                                              {"state1", "IL"},
                                                              {"zip1", "62702"},
                                                              {"phone1a", "217-555-0171"},
                                                              {"fullname2", "Ruth Jensen"},
                                                              {"addr2a", "55 Elm"},
                                                              {"addr2b", "Rear"},
                                                              {"city2", "Rochester"},
                                                              {"state2", "IL"},
                                                              {"zip2", "62563"},
                                                              {"phone2a", "217-555-0172"}};
    for (const auto &[column, value] : expected)
        EXPECT_EQ(recordColumn(record(), column), QStringList{value}) << column;
    EXPECT_EQ(recordColumn(record(), "miscvalue1"), QStringList{"M-1001"});
}

TEST_F(UserFieldsReportTest, AnEmployeesRecordCarriesTheEmployeeFieldsUnderTheMemberNames)
{
    UserFieldsWindow *w = openWith("EDT~15");
    ASSERT_NE(w, nullptr);
    number(w, 1, "1");
    print(w);
    EXPECT_EQ(clipboard(), request("miscinfo1e.rpt"));
    const std::pair<const char *, const char *> expected[] = {{"lname", "Whitfield"},
                                                              {"fname", "Karen"},
                                                              {"fullname1", "Karen Whitfield"},
                                                              {"addr1a", "1804 South Grand"},
                                                              {"addr1b", "Apt 2"},
                                                              {"city1", "Springfield"},
                                                              {"state1", "IL"},
                                                              {"zip1", "62703"},
                                                              {"phone1a", "217-555-0161"},
                                                              {"fullname2", "K. Whitfield"},
                                                              {"addr2a", "PO Box 9"},
                                                              {"addr2b", "Suite 1"},
                                                              {"city2", "Chatham"},
                                                              {"state2", "IL"},
                                                              {"zip2", "62629"},
                                                              {"phone2a", "217-555-0199"}};
    for (const auto &[column, value] : expected)
        EXPECT_EQ(recordColumn(record(), column), QStringList{value}) << column;
    EXPECT_EQ(recordColumn(record(), "miscdesc1"), QStringList{"Parking space"});
    EXPECT_EQ(recordColumn(record(), "miscvalue1"), QStringList{"P7"});
}

TEST_F(UserFieldsReportTest, AVendorsRecordHasEmptyHeadingFields)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    number(w, 0, "1");
    print(w);
    EXPECT_EQ(recordColumn(record(), "lname"), QStringList{""});
    EXPECT_EQ(recordColumn(record(), "fullname1"), QStringList{""});
}

TEST_F(UserFieldsReportTest, ValuesWithQuotesTildesAndLineFeedsStayOutOfTheRequest)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    const QString awkward = "O'Brien ~x~\nline two";
    w->controls().txtinfo[0]->setText(awkward);
    number(w, 0, "1");
    print(w);
    EXPECT_EQ(clipboard(), request("miscinfo1v.rpt"));
    EXPECT_FALSE(clipboard().contains("O'Brien"));
    EXPECT_EQ(recordColumn(record(), "miscvalue1"), QStringList{awkward});
}

TEST_F(UserFieldsReportTest, WithoutALocalFolderTheRecordGoesToTheUsersCacheFolder)
{
    module.session.localDrive = folder.file("no such folder");
    const QString cache =
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + "/velmora";
    EXPECT_EQ(ReportRecord::pathFor(module.session.localDrive, "DEMO"),
              cache + "/miscreport-demo.mdb");
    EXPECT_TRUE(QFileInfo(cache).isDir());
    EXPECT_EQ(ReportRecord::pathFor(folder.file("local"), "O'Hara ~1"),
              folder.file("local/miscreport-ohara1.mdb"));
}

TEST_F(UserFieldsReportTest, AMissingLayoutIsNamedAfterTheRequestIsHandedOver)
{
    QFile::remove(folder.file("miscinfo1v.rpt"));
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    number(w, 0, "1");
    print(w);
    EXPECT_EQ(clipboard(), request("miscinfo1v.rpt"));
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.last()->text, "miscinfo1v.rpt cannot be found");
}

} // namespace
