#include "RunnerCompany.h"

#include "common/Clipboard.h"
#include "frmmisc/ReportRecord.h"
#include "frmmisc/UserFieldsCall.h"
#include "reports/ReportRequest.h"
#include "support/Module.h"

#include <QAction>
#include <QCoreApplication>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>

namespace {

// Each report the module can request: the module's own request (its report menu on the
// generated company, the clipboard read afterwards) is sent to a PDF file by the real runner,
// and the PDF's text holds the rows and totals the sqlite3 program computes from the same file.
class ShippedReports : public RunnerCompany {
protected:
    // The request the report menu entry leaves on the clipboard.
    QString menuRequest(const char *entry, long vendor = 0, QStringList dates = {})
    {
        QTemporaryDir locks;
        Module module{locks.path()};
        EXPECT_EQ(module.start(QStringLiteral("VDR99DEMO")), std::nullopt);
        const auto &c = module.window->controls();
        if (vendor > 0) {
            c.Option1[0]->setChecked(true);
            c.lookupinput->setText(QString::number(vendor));
            c.cmdgo->click();
            QCoreApplication::processEvents();
        }
        for (const QString &date : dates)
            module.dialogs.inputAnswers.push_back(date);
        module.window->action(QString::fromLatin1(entry))->trigger();
        QCoreApplication::processEvents();
        return module.services.clipboard.text();
    }

    // The PDF's text of the report the module requests with that menu entry.
    QString report(const char *entry, long vendor = 0, QStringList dates = {})
    {
        const QString request = menuRequest(entry, vendor, dates);
        EXPECT_TRUE(request.startsWith("Crystal~\n")) << request.toStdString();
        const Run run = runRequest(toFile(request, QStringLiteral("out.pdf")));
        EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
        EXPECT_EQ(run.errors, "");
        return pdfText(QStringLiteral("out.pdf"));
    }

    // Every text of the list appears in the report, in that order.
    static void expectInOrder(const QString &text, const QStringList &items)
    {
        ASSERT_FALSE(items.isEmpty());
        qsizetype at = 0;
        for (const QString &item : items) {
            const qsizetype found = text.indexOf(item, at);
            ASSERT_GE(found, 0) << "\"" << item.toStdString() << "\" not found in order in:\n"
                                << text.toStdString();
            at = found + item.size();
        }
    }

    // A vendor with open and paid invoices.
    long busyVendor()
    {
        return sqliteValue("ap.mdb",
                           "select vendnumber from invoices group by vendnumber having "
                           "sum(invstatus between 1 and 3) > 1 and sum(invstatus = 4) > 1 "
                           "order by vendnumber limit 1")
            .toLong();
    }

    QString money(const QString &sql) { return withSeparators(sqliteValue("ap.mdb", sql)); }
};

TEST_F(ShippedReports, VendorListByNumberHoldsEveryVendorInNumberOrder)
{
    const QString text = report("rptbasic");
    const QStringList vendors = sqlite("ap.mdb", "select vendnumber || ' ' || vendname from "
                                                 "vendors order by vendnumber");
    ASSERT_EQ(vendors.size(), 40);
    // Each vendor starts a line of its own, in number order.
    QStringList lines;
    for (const QString &line : text.split('\n'))
        lines << line.simplified();
    QStringList expected;
    for (const QString &vendor : vendors)
        expected << "\n" + vendor.simplified();
    expectInOrder(lines.join('\n'), expected);
    EXPECT_TRUE(text.contains("40 vendors"));
    EXPECT_TRUE(text.contains("Vendor List"));
}

TEST_F(ShippedReports, VendorListByNameHoldsEveryVendorInNameOrder)
{
    const QString text = report("rptbasica");
    expectInOrder(text, sqlite("ap.mdb", "select vendname from vendors order by vendname"));
    EXPECT_TRUE(text.contains("40 vendors"));
}

TEST_F(ShippedReports, VendorMasterListByNameShowsEachVendorsAddressAndBalances)
{
    const QString text = report("rptmastera");
    QStringList expected;
    for (const QString &row :
         sqlite("ap.mdb", "select vendname, vendaddr1, printf('%.2f', vendytd) from vendors "
                          "order by vendname")) {
        const QStringList parts = row.split('|');
        expected << parts[0];
        if (!parts[1].trimmed().isEmpty())
            expected << parts[1].trimmed();
        expected << "YTD purchases " + withSeparators(parts[2]);
    }
    expectInOrder(text, expected);
    EXPECT_TRUE(text.contains("40 vendors"));
}

TEST_F(ShippedReports, MailingListByNumberShowsEachAddress)
{
    const QString text = report("rptmail");
    QStringList expected;
    for (const QString &row : sqlite("ap.mdb", "select vendname, vendcity, vendzip from vendors "
                                               "order by vendnumber"))
        for (const QString &part : row.split('|'))
            if (!part.trimmed().isEmpty())
                expected << part.trimmed();
    expectInOrder(text, expected);
}

TEST_F(ShippedReports, AddressLabelsPutThirtyVendorsOnASheet)
{
    report("rptfilelabel");
    QProcess tool;
    for (int page : {1, 2}) {
        tool.start("pdftotext", {"-f", QString::number(page), "-l", QString::number(page),
                                 path("out.pdf"), "-"});
        ASSERT_TRUE(tool.waitForFinished());
        const QString text = QString::fromUtf8(tool.readAllStandardOutput());
        const QStringList names =
            sqlite("ap.mdb", QStringLiteral("select vendname from vendors order by vendnumber "
                                            "limit 30 offset %1")
                                 .arg((page - 1) * 30));
        for (const QString &name : names)
            EXPECT_TRUE(text.contains(name)) << page << " " << name.toStdString();
        // The first vendor of the other sheet is not on this one.
        const QString other = sqliteValue("ap.mdb", QStringLiteral("select vendname from vendors "
                                                                   "order by vendnumber limit 1 "
                                                                   "offset %1")
                                                        .arg(page == 1 ? 30 : 0));
        EXPECT_FALSE(text.contains(other)) << page;
    }
    tool.start("pdfinfo", {path("out.pdf")});
    ASSERT_TRUE(tool.waitForFinished());
    EXPECT_TRUE(QString::fromUtf8(tool.readAllStandardOutput())
                    .contains(QRegularExpression("Pages:\\s+2\\n")));
}

TEST_F(ShippedReports, FileFolderLabelsShowNameAndNumber)
{
    const QString text = report("rptfilelabel67");
    for (const QString &row : sqlite(
             "ap.mdb", "select vendname, vendnumber from vendors order by vendnumber limit 30")) {
        const QStringList parts = row.split('|');
        EXPECT_TRUE(text.contains(parts[0])) << parts[0].toStdString();
        EXPECT_TRUE(text.contains("Vendor " + parts[1])) << parts[1].toStdString();
    }
}

TEST_F(ShippedReports, InvoicesToPayTotalEveryOpenInvoiceByDueDate)
{
    const QString text = report("rpttopay");
    const QString count =
        sqliteValue("ap.mdb", "select count(*) from invoices where invstatus between 1 and 3");
    ASSERT_GT(count.toInt(), 0);
    EXPECT_TRUE(text.contains(count + " invoices")) << text.toStdString();
    const QString total = money("select printf('%.2f', sum(invamount)) from invoices where "
                                "invstatus between 1 and 3");
    EXPECT_TRUE(QRegularExpression("Report total\\s+" + QRegularExpression::escape(total))
                    .match(text)
                    .hasMatch())
        << total.toStdString();
    // The first due date's own total.
    const QString firstDue = sqliteValue("ap.mdb", "select min(invduedate) from invoices where "
                                                   "invstatus between 1 and 3");
    const QString firstTotal = money(QStringLiteral("select printf('%.2f', sum(invamount)) from "
                                                    "invoices where invstatus between 1 and 3 "
                                                    "and invduedate = %1")
                                         .arg(firstDue));
    const QString shownDue = firstDue.mid(4, 2) + "/" + firstDue.mid(6, 2) + "/" + firstDue.left(4);
    expectInOrder(text, {"Due " + shownDue, "Total", firstTotal});
}

TEST_F(ShippedReports, OpenInvoicesOfTheVendorShownInDateOrderWithTheirTotal)
{
    const long vendor = busyVendor();
    ASSERT_GT(vendor, 0);
    const QString text = report("rptunpaid", vendor);
    const QString where =
        QStringLiteral("where vendnumber = %1 and invstatus between 1 and 3").arg(vendor);
    expectInOrder(text, sqlite("ap.mdb", "select invnumber from invoices " + where +
                                             " order by invdate, invnumber"));
    EXPECT_TRUE(text.contains(sqliteValue("ap.mdb", "select count(*) from invoices " + where) +
                              " invoices"));
    EXPECT_TRUE(
        text.contains(money("select printf('%.2f', sum(invamount)) from invoices " + where)));
    // Paid invoices of the vendor are not on it.
    const QString paid = sqliteValue("ap.mdb", QStringLiteral("select invnumber from invoices "
                                                              "where vendnumber = %1 and "
                                                              "invstatus = 4 limit 1")
                                                   .arg(vendor));
    EXPECT_FALSE(text.contains(paid + " ")) << paid.toStdString();
}

TEST_F(ShippedReports, PaidInvoicesOfTheVendorForTheYearWithInvoiceAndCheckTotals)
{
    const long vendor = busyVendor();
    const QString text = report("rptpaid", vendor, {"20240101", "20241231"});
    const QString where = QStringLiteral("where vendnumber = %1 and invstatus = 4 and "
                                         "invcheckdate between 20240101 and 20241231")
                              .arg(vendor);
    expectInOrder(text, sqlite("ap.mdb", "select invnumber from invoices " + where +
                                             " order by invcheckdate, invnumber"));
    EXPECT_TRUE(text.contains(sqliteValue("ap.mdb", "select count(*) from invoices " + where) +
                              " invoices"));
    const QString amounts = money("select printf('%.2f', sum(invamount)) from invoices " + where);
    const QString paid = money("select printf('%.2f', sum(invcheckamount)) from invoices " + where);
    EXPECT_TRUE(QRegularExpression("Report total\\s+" + QRegularExpression::escape(amounts) +
                                   "\\s+" + QRegularExpression::escape(paid))
                    .match(text)
                    .hasMatch())
        << text.toStdString();
}

TEST_F(ShippedReports, ChecksOfTheVendorWithTheDatesCancelledCoverEveryDate)
{
    const QString vendor = sqliteValue("ap.mdb", "select chkpayeenum from checks group by "
                                                 "chkpayeenum order by count(*) desc limit 1");
    const QString text = report("rptchecks", vendor.toLong(), {"", ""});
    const QString where = "where chkpayeenum = " + vendor;
    QStringList numbers =
        sqlite("ap.mdb", "select chknum from checks " + where + " order by chkdate, chknum");
    ASSERT_GT(numbers.size(), 1);
    expectInOrder(text, numbers);
    EXPECT_TRUE(text.contains(QString::number(numbers.size()) + " checks"));
    EXPECT_TRUE(text.contains(money("select printf('%.2f', sum(chkamount)) from checks " + where)));
}

TEST_F(ShippedReports, AllInvoicesOfAQuarterInDateOrderWithTheirTotal)
{
    const QString text = report("mnuallinvoices", 0, {"20240101", "20240331"});
    const QString where = "where invdate between 20240101 and 20240331";
    const QString count = sqliteValue("ap.mdb", "select count(*) from invoices " + where);
    ASSERT_GT(count.toInt(), 10);
    EXPECT_TRUE(text.contains(count + " invoices"));
    expectInOrder(text, sqlite("ap.mdb", "select invnumber from invoices " + where +
                                             " order by invdate, vendnumber, invnumber"));
    const QString total = money("select printf('%.2f', sum(invamount)) from invoices " + where);
    EXPECT_TRUE(QRegularExpression("Report total\\s+" + QRegularExpression::escape(total))
                    .match(text)
                    .hasMatch());
    // An invoice of April is not on it.
    const QString april = sqliteValue("ap.mdb", "select invnumber from invoices where invdate "
                                                "between 20240401 and 20240430 limit 1");
    EXPECT_FALSE(text.contains(april + " "));
}

TEST_F(ShippedReports, AllInvoicesWithTheDatesCancelledIsAnEmptyReport)
{
    const QString text = report("mnuallinvoices", 0, {"", ""});
    EXPECT_TRUE(text.contains("0 invoices"));
    EXPECT_TRUE(QRegularExpression("Report total\\s+0\\.00").match(text).hasMatch());
}

TEST_F(ShippedReports, PaymentsFor1099ShowEachVendorsTotalFormAndThreshold)
{
    const QString text = report("pv1099", 0, {"20240101", "20241231"});
    const QStringList rows = sqlite(
        "ap.mdb",
        "select i.vendnumber, printf('%.2f', sum(i.invcheckamount)), v.vend1099type, "
        "case when v.vend1099type between 1 and 5 and round(sum(i.invcheckamount), 2) >= 600 "
        "then 'Yes' else 'No' end from invoices i left join vendors v on v.vendnumber = "
        "i.vendnumber "
        "where i.invcheckdate between 20240101 and 20241231 group by i.vendnumber "
        "order by i.vendnumber");
    ASSERT_GT(rows.size(), 3);
    const QStringList forms = {"None",     "1099-MISC", "1099-INT",
                               "1099-DIV", "1099-MISC", "1099-NEC"};
    int yes = 0;
    for (const QString &row : rows) {
        const QStringList p = row.split('|');
        const QString form = forms.value(p[2].toInt(), "None");
        yes += p[3] == "Yes";
        const QRegularExpression line("(?m)^\\s*" + p[0] + "\\s.*" + form + "\\s+" +
                                      QRegularExpression::escape(withSeparators(p[1])) + "\\s+" +
                                      p[3] + "\\s*$");
        EXPECT_TRUE(line.match(text).hasMatch()) << row.toStdString() << "\n" << text.toStdString();
    }
    EXPECT_GT(yes, 0); // both verdicts are checked
    EXPECT_LT(yes, rows.size());
    EXPECT_TRUE(text.contains(money("select printf('%.2f', sum(invcheckamount)) from invoices "
                                    "where invcheckdate between 20240101 and 20241231")));
}

TEST_F(ShippedReports, InvoicesOfTheVendorInADateRangePaidOrNot)
{
    const long vendor = busyVendor();
    const QString text = report("mnudaterange", vendor, {"20240101", "20241231"});
    const QString where = QStringLiteral("where vendnumber = %1 and invdate between 20240101 "
                                         "and 20241231")
                              .arg(vendor);
    expectInOrder(text, sqlite("ap.mdb", "select invnumber from invoices " + where +
                                             " order by invdate, invnumber"));
    EXPECT_TRUE(text.contains(sqliteValue("ap.mdb", "select count(*) from invoices " + where) +
                              " invoices"));
    EXPECT_TRUE(
        text.contains(money("select printf('%.2f', sum(invamount)) from invoices " + where)));
}

// The user fields' report reads the record the window writes, named as the sixth data file.
TEST_F(ShippedReports, VendorUserFieldsPrintTheChosenDescriptionsAndValues)
{
    const UserFieldsCall call = UserFieldsCall::parse(QStringLiteral("VEN12"));
    QStringList descriptions;
    for (int i = 1; i <= 30; ++i)
        descriptions << QStringLiteral("Field %1").arg(i);
    const ReportRecord record(call, {4, 0}, descriptions);
    QStringList values;
    for (int i = 1; i <= 30; ++i)
        values << QStringLiteral("value %1").arg(i);
    ReportRecord::Account account{12, {}, values};
    const QString recordPath = path("record.mdb");
    record.write(recordPath, {account});
    ReportRequest request;
    request.reportFileName = call.reportLayout();
    request.dataFiles[5] = recordPath;
    const Run run = runRequest(toFile(request.text(0, 0), "out.pdf"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    const QString text = pdfText("out.pdf");
    const QString name =
        sqliteValue("ap.mdb", "select vendname from vendors where vendnumber = 12");
    expectInOrder(text,
                  {"Vendor 12", name, "Field 5", "value 5", "Field 1", "value 1", "1 vendors"});
    EXPECT_FALSE(text.contains("Field 2"));
}

TEST_F(ShippedReports, MemberAndEmployeeUserFieldsPrintTheirHeadings)
{
    for (const char *code : {"ABC7", "EDT~7"}) {
        const UserFieldsCall call = UserFieldsCall::parse(QString::fromLatin1(code));
        const ReportRecord record(call, {1}, QStringList(30, "Shirt size"));
        ReportRecord::Account account{
            7,
            {{"fullname1", "Dana Smith"}, {"city1", "Dover"}, {"state1", "DE"}, {"zip1", "19901"}},
            QStringList(30, "XL")};
        record.write(path("record.mdb"), {account});
        ReportRequest request;
        request.reportFileName = call.reportLayout();
        request.dataFiles[5] = path("record.mdb");
        const Run run = runRequest(toFile(request.text(0, 0), "out.pdf"));
        ASSERT_EQ(run.exitCode, 0) << code << run.errors.toStdString();
        const QString text = pdfText("out.pdf");
        expectInOrder(text, {"7 Dana Smith", "Dover, DE 19901", "Shirt size", "XL"});
    }
}

} // namespace
