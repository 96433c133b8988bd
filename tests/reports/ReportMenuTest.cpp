#include "reports/ReportMenu.h"
#include "common/Clipboard.h"
#include "support/VendorScreen.h"

#include <QAction>
#include <QFile>
#include <QTest>

namespace {

const QString head = QStringLiteral("Crystal~\nReportFileName=%1~\nWindowTitle=~\nMarginTop=0~\n"
                                    "MarginLeft=0~");

// The vendor screen with the report runner and every report file in the data folder; the runner
// only notes that it was started.
class ReportMenuTest : public VendorScreen {
protected:
    void SetUp() override
    {
        VendorScreen::SetUp();
        folder.writeProgram("cryprint.exe", "echo started >> runner.txt");
        for (const char *file :
             {"rap001.rpt", "rap002.rpt", "rap003.rpt", "rap003a.rpt", "rap004.rpt", "rap005.rpt",
              "rap006.rpt", "rap007.rpt", "rap007a.rpt", "rap007b.rpt", "rap014.rpt", "1099pv.rpt"})
            folder.writeFile(file, "report");
    }
    void menu(const char *name)
    {
        module.window->action(QString::fromLatin1(name))->trigger();
        QCoreApplication::processEvents();
    }
    QString clipboard() const { return module.services.clipboard.text(); }
    void dates(const QString &from, const QString &to) { module.dialogs.inputAnswers = {from, to}; }
};

struct ListCase {
    const char *entry;
    const char *file;
    const char *sort;
};

void PrintTo(const ListCase &c, std::ostream *os)
{
    *os << c.entry;
}

class ListReports : public ReportMenuTest, public ::testing::WithParamInterface<ListCase> {};

TEST_P(ListReports, RequestNamesTheFileAndTheSortAndIgnoresTheVendorShown)
{
    lookup(0, "250"); // a vendor on screen changes nothing
    menu(GetParam().entry);
    EXPECT_EQ(clipboard(), head.arg(GetParam().file) + QStringLiteral("\nSortFields(0)=") +
                               GetParam().sort + QLatin1Char('~'));
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(module.window->status(), "Report complete");
}

INSTANTIATE_TEST_SUITE_P(
    Menu, ListReports,
    ::testing::Values(ListCase{"rptbasic", "rap001.rpt", "+{vendors.vendnumber}"},
                      ListCase{"rptbasica", "rap001.rpt", "+{vendors.vendname}"},
                      ListCase{"rptmaster", "rap002.rpt", "+{vendors.vendnumber}"},
                      ListCase{"rptmastera", "rap002.rpt", "+{vendors.vendname}"},
                      ListCase{"rptmail", "rap007.rpt", "+{vendors.vendnumber}"},
                      ListCase{"rptmaila", "rap007.rpt", "+{vendors.vendname}"},
                      ListCase{"rptfilelabel", "rap007a.rpt", "+{vendors.vendnumber}"},
                      ListCase{"rptfilelabel67", "rap007b.rpt", "+{vendors.vendnumber}"}));

TEST_F(ReportMenuTest, InvoicesToPayHaveNoFormulaAndNoSort)
{
    menu("rptbasic");
    menu("rpttopay");
    EXPECT_EQ(clipboard(), head.arg("rap006.rpt"));
}

TEST_F(ReportMenuTest, OpenInvoicesOfTheVendorShown)
{
    lookup(0, "100");
    menu("rptunpaid");
    EXPECT_EQ(clipboard(), head.arg("rap003.rpt") +
                               "\nSelectionFormula={invoices.vendnumber} = 100 and "
                               "{invoices.invstatus} >= 1 and {invoices.invstatus} <= 3~");
}

TEST_F(ReportMenuTest, PaidInvoicesForADateRangeKeepTheMissingBlank)
{
    lookup(0, "250");
    dates("20240101", "20241231");
    menu("rptpaid");
    EXPECT_EQ(clipboard(),
              head.arg("rap004.rpt") +
                  "\nSelectionFormula={invoices.vendnumber} =250 and {invoices.invstatus} = 4 and "
                  "{invoices.invcheckdate} >= 20240101 and {invoices.invcheckdate} <= 20241231~");
    ASSERT_GE(module.dialogs.shown.size(), 1u);
    EXPECT_EQ(module.dialogs.shown[0].title, "FROM Date - Paid Invoices");
    EXPECT_EQ(module.window->reports().lastFrom(), 20240101);
    EXPECT_EQ(module.window->reports().lastTo(), 20241231);
}

TEST_F(ReportMenuTest, PaidInvoicesWithTheDatesCancelledCoverEveryDate)
{
    lookup(0, "250");
    dates("", "");
    menu("rptpaid");
    EXPECT_EQ(clipboard(), head.arg("rap004.rpt") + "\nSelectionFormula={invoices.vendnumber} "
                                                    "=250 and {invoices.invstatus} = 4~");
}

TEST_F(ReportMenuTest, ChecksWithTheDatesCancelledGiveTheVendorAlone)
{
    folder.addVendor(12, "Paper Co");
    lookup(0, "12");
    ASSERT_EQ(field(0), "12");
    dates("", "");
    menu("rptchecks");
    EXPECT_EQ(clipboard(),
              head.arg("rap005.rpt") + "\nSelectionFormula={checks.chkpayeenum} = 12~");
    EXPECT_EQ(module.dialogs.shown[0].title, "FROM Date - Checks Issued");
}

TEST_F(ReportMenuTest, ChecksForADateRange)
{
    lookup(0, "100");
    dates("20260101", "20260630");
    menu("rptchecks");
    EXPECT_EQ(clipboard(), head.arg("rap005.rpt") +
                               "\nSelectionFormula={checks.chkpayeenum} = 100 and "
                               "{checks.chkdate} >= 20260101 and {checks.chkdate} <= 20260630~");
}

struct VendorCommand {
    const char *entry;
    const char *title;
};

void PrintTo(const VendorCommand &c, std::ostream *os)
{
    *os << c.entry;
}

class VendorCommands : public ReportMenuTest,
                       public ::testing::WithParamInterface<VendorCommand> {};

TEST_P(VendorCommands, WithoutAVendorRecalledTheMessageComesAndNothingElse)
{
    module.services.clipboard.setText("before");
    for (const char *typed : {"", "0", "-1", "abc"}) {
        module.dialogs.shown.clear();
        c().Text1[0]->setText(QString::fromLatin1(typed));
        menu(GetParam().entry);
        ASSERT_EQ(module.dialogs.shown.size(), 1u) << typed;
        EXPECT_EQ(module.dialogs.shown[0].text, "You must recall a vendor account first.");
        EXPECT_EQ(module.dialogs.shown[0].title, GetParam().title);
        EXPECT_EQ(module.dialogs.shown[0].icon, Dialogs::Icon::Information);
    }
    EXPECT_EQ(clipboard(), "before");
}

INSTANTIATE_TEST_SUITE_P(Menu, VendorCommands,
                         ::testing::Values(VendorCommand{"rptunpaid", "Vendor Open Invoices"},
                                           VendorCommand{"rptpaid", "Vendor Paid Invoices"},
                                           VendorCommand{"rptchecks", "Vendor Checks"},
                                           VendorCommand{"mnudaterange",
                                                         "Vendor Invoices - Date Range"}));

TEST_F(ReportMenuTest, AllInvoicesByDateRange)
{
    module.session.messageText = "whatever was there";
    dates("20260101", "20261231");
    menu("mnuallinvoices");
    EXPECT_EQ(clipboard(), head.arg("rap014.rpt") +
                               "\nSelectionFormula={invoices.invdate} >= 20260101 and "
                               "{invoices.invdate} <= 20261231~");
    EXPECT_EQ(module.dialogs.shown[0].title, "FROM Date - whatever was there");
}

TEST_F(ReportMenuTest, AllInvoicesWithTheDatesCancelledSelectNothing)
{
    dates("", "");
    menu("mnuallinvoices");
    EXPECT_EQ(clipboard(), head.arg("rap014.rpt") + "\nSelectionFormula={invoices.invdate} >= 0 "
                                                    "and {invoices.invdate} <= 0~");
}

TEST_F(ReportMenuTest, VendorPaymentsRunDirectlyWithoutStatusTexts)
{
    module.window->setStatus("as it was");
    dates("20260101", "20261231");
    menu("pv1099");
    EXPECT_EQ(clipboard(), head.arg("1099pv.rpt") +
                               "\nSelectionFormula={invoices.invcheckdate} >= 20260101 and "
                               "{invoices.invcheckdate} <= 20261231~");
    EXPECT_EQ(module.window->status(), "as it was");
    EXPECT_EQ(module.dialogs.shown[0].title, "FROM Date - Vendor Payments");
    EXPECT_TRUE(module.window->reports().request().selectionFormula.isEmpty());
}

TEST_F(ReportMenuTest, VendorPaymentsCancelledSelectNothing)
{
    dates("", "");
    menu("pv1099");
    EXPECT_EQ(clipboard(), head.arg("1099pv.rpt") +
                               "\nSelectionFormula={invoices.invcheckdate} >= 0 and "
                               "{invoices.invcheckdate} <= 0~");
}

TEST_F(ReportMenuTest, DateRangeOfTheVendorShownIsOneShot)
{
    lookup(0, "251");
    dates("20260201", "20260228");
    menu("mnudaterange");
    EXPECT_EQ(clipboard(), head.arg("rap003a.rpt") +
                               "\nSelectionFormula={invoices.vendnumber} = 251 and "
                               "{invoices.invdate} >= 20260201 and {invoices.invdate} <= "
                               "20260228~");
    // The next payments command is the all-vendor one again.
    dates("20260301", "20260331");
    menu("pv1099");
    EXPECT_TRUE(clipboard().startsWith(head.arg("1099pv.rpt")));
}

TEST_F(ReportMenuTest, DateRangeWithoutAVendorDoesNotAskForDates)
{
    menu("mnudaterange");
    EXPECT_EQ(module.dialogs.count("input"), 0);
    EXPECT_EQ(module.dialogs.count(), 1);
}

TEST_F(ReportMenuTest, TheRunnerIsStartedOncePerReport)
{
    menu("rptbasic");
    menu("rptmaila");
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return folder.readFile("runner.txt").count('\n') == 2; }, 5000));
}

TEST_F(ReportMenuTest, MarginsOfTheUserAreSentWithEveryRequest)
{
    folder.writeFile("printmargin.1", "144\n-72\n"); // DEMO is system user 1
    menu("rptbasic");
    EXPECT_TRUE(clipboard().contains("\nMarginTop=144~\nMarginLeft=-72~\n"))
        << clipboard().toStdString();
}

TEST_F(ReportMenuTest, TheLayoutAdjusterStartsWithoutBeingWaitedFor)
{
    folder.writeProgram("fprint.exe", "sleep 2; echo done > adjusted.txt");
    QElapsedTimer timer;
    timer.start();
    menu("mnueditprintspec");
    EXPECT_LT(timer.elapsed(), 1500);
    EXPECT_FALSE(QFile::exists(folder.file("adjusted.txt")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(folder.file("adjusted.txt")); }, 10000));
}

TEST_F(ReportMenuTest, PrinterSetupIsWaitedFor)
{
    folder.writeProgram("prtctrl.exe", "sleep 0.3; echo done > setup.txt");
    menu("prtsetup");
    EXPECT_TRUE(QFile::exists(folder.file("setup.txt")));
}

TEST_F(ReportMenuTest, PrinterMarginsOpenTheMarginDialog)
{
    module.dialogs.inputAnswers = {"1", "0.5"};
    menu("mnuprintmargins");
    EXPECT_EQ(module.dialogs.shown[0].title, "Set Printer Margins");
    EXPECT_EQ(folder.readFile("printmargin.1"), "1440\n720\n");
}

} // namespace
