#include "RunnerCompany.h"

#include "reports/ReportMenu.h"
#include "support/Module.h"
#include "support/PdfWords.h"

#include <QAction>
#include <QCoreApplication>
#include <QProcess>

namespace {

// The 1099 payments report and the 1099 run answer the same question for a vendor whose
// payments of the year are its year-to-date total: is a form printed at "$600 or more"? At
// exactly 600.00 both say yes, for every kind of form; one cent less, both say no.
class PaymentsAndThe1099Run : public RunnerCompany {
protected:
    void exec(const QString &sql)
    {
        if (m_server) {
            m_server->exec("ap.mdb", sql);
            return;
        }
        ASSERT_EQ(QProcess::execute("sqlite3", {path("ap.mdb"), sql}), 0);
    }
    // The first vendor, made a vendor of that kind whose only payment of 2024 is amount.
    QString vendorPaid(int type1099, const QString &amount)
    {
        const QString vendor = sqliteValue("ap.mdb", "select min(vendnumber) from vendors");
        exec("update invoices set invcheckamount = 0, invcheckdate = 0 where vendnumber = " +
             vendor);
        exec("update invoices set invcheckamount = " + amount +
             ", invcheckdate = 20240615 where invnumber = (select min(invnumber) from invoices "
             "where vendnumber = " +
             vendor + ")");
        exec(QStringLiteral("update vendors set vend1099type = %1, vendytd = %2 where "
                            "vendnumber = %3")
                 .arg(type1099)
                 .arg(amount, vendor));
        return vendor;
    }
    // The report's line for the vendor.
    QString reportLine(const QString &vendor)
    {
        const Run run = runRequest(
            "Crystal~\nReportFileName=1099pv.rpt~\nWindowTitle=~\nMarginTop=0~\nMarginLeft=0~\n"
            "SelectionFormula={invoices.invcheckdate} >= 20240101 and {invoices.invcheckdate} "
            "<= 20241231~\nDestination=File~\nPrintFileName=out.pdf~\nPrintFileType=PDF~");
        EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
        for (const QString &line : pdfText("out.pdf").split('\n'))
            if (line.trimmed().startsWith(vendor + ' '))
                return line.simplified();
        return {};
    }
    // Whether the module's 1099 run of that kind, answered "$600 or more", prints the vendor.
    bool runPrints(const char *menu, const QString &vendor)
    {
        qputenv("APMASTER_PRINT_PDF", path("forms.pdf").toLocal8Bit());
        Module module(path(QString()));
        EXPECT_EQ(module.start("VDR99DEMO"), std::nullopt);
        module.dialogs.yesNoAnswers = {Dialogs::Yes, Dialogs::No, Dialogs::No, Dialogs::Yes};
        module.window->action(QString::fromLatin1(menu))->trigger();
        QCoreApplication::processEvents();
        qunsetenv("APMASTER_PRINT_PDF");
        const PdfWords words(path("forms.pdf"));
        EXPECT_TRUE(words.ok()) << words.error().toStdString();
        for (int page = 0; page < words.pages(); ++page)
            if (words.find(page, vendor).size() > 0)
                return true;
        return false;
    }
};

TEST_F(PaymentsAndThe1099Run, AnNecVendorAtExactlySixHundredIsYesInBoth)
{
    const QString vendor = vendorPaid(5, "600");
    const QString line = reportLine(vendor);
    EXPECT_TRUE(line.endsWith("1099-NEC 600.00 Yes")) << line.toStdString();
    EXPECT_TRUE(runPrints("rpt1099nec", vendor));
}

TEST_F(PaymentsAndThe1099Run, ADividendVendorAtExactlySixHundredIsYesInBoth)
{
    const QString vendor = vendorPaid(3, "600");
    const QString line = reportLine(vendor);
    EXPECT_TRUE(line.endsWith("1099-DIV 600.00 Yes")) << line.toStdString();
    EXPECT_TRUE(runPrints("rpt1099div", vendor));
}

TEST_F(PaymentsAndThe1099Run, AMiscVendorOneCentShortIsNoInBoth)
{
    const QString vendor = vendorPaid(1, "599.99");
    const QString line = reportLine(vendor);
    EXPECT_TRUE(line.endsWith("1099-MISC 599.99 No")) << line.toStdString();
    EXPECT_FALSE(runPrints("rpt1099", vendor));
}

} // namespace
