#include "ReportQuery.h"
#include "RunnerCalls.h"
#include "RunnerCompany.h"

namespace {

// The preview reads its first rows through a limited statement, the rest through the whole
// one: every invoice of the generated company (480) comes once, in the report's order.
class QuickStart : public RunnerCompany {
protected:
    QStringList invoiceNumbers(long long quickRows, QStringList *usedUpAt = nullptr)
    {
        QString error;
        const auto def = loadDefinition("rap014.rpt", error);
        EXPECT_TRUE(def) << error.toStdString();
        RunnerRequest request;
        request.reportFileName = "rap014.rpt";
        ReportQuery rows;
        rows.setQuickStart(quickRows);
        EXPECT_TRUE(openRows(rows, *def, request, error)) << error.toStdString();
        QStringList numbers;
        const ReportDefinition::Field number{"invoices", "invnumber"};
        while (true) {
            if (usedUpAt && rows.quickRowsUsedUp())
                *usedUpAt << QString::number(numbers.size());
            if (!rows.next())
                break;
            numbers << QStringLiteral("%1 %2").arg(
                rows.value({"invoices", "vendnumber"}).toString(), rows.value(number).toString());
        }
        EXPECT_EQ(rows.error(), QString());
        return numbers;
    }
};

TEST_F(QuickStart, TheRowsAfterTheFirstOnesFollowInTheSameOrder)
{
    const QStringList expected = sqlite("ap.mdb", "select vendnumber || ' ' || invnumber from "
                                                  "invoices order by invdate, vendnumber, "
                                                  "invnumber, rowid");
    ASSERT_EQ(expected.size(), 480);
    QStringList usedUpAt;
    EXPECT_EQ(invoiceNumbers(100, &usedUpAt), expected);
    // Only after the 100th row does the whole statement have to run.
    EXPECT_EQ(usedUpAt, QStringList{"100"});
    EXPECT_EQ(invoiceNumbers(479), expected);
    EXPECT_EQ(invoiceNumbers(480), expected);
    EXPECT_EQ(invoiceNumbers(0), expected);
}

TEST_F(QuickStart, AReportShorterThanTheFirstRowsNeedsNoSecondStatement)
{
    QStringList usedUpAt;
    EXPECT_EQ(invoiceNumbers(481, &usedUpAt).size(), 480);
    EXPECT_EQ(usedUpAt, QStringList{});
}

} // namespace
