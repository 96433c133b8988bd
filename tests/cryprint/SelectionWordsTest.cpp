#include "SelectionWords.h"

#include <gtest/gtest.h>

namespace {

struct WordsCase {
    const char *formula;
    const char *words;
};

class SelectionWordsTest : public ::testing::TestWithParam<WordsCase> {};

TEST_P(SelectionWordsTest, TheFormulaIsSaidInTheReportsWords)
{
    const auto def = ReportDefinition::parse("title: Invoices\ntable: 0 invoices ap.mdb\n"
                                             "column: {invoices.invdate} | Date | 1 | date\n"
                                             "column: {invoices.invamount} | Amount | 1 | money\n");
    EXPECT_EQ(selectionInWords(QString::fromLatin1(GetParam().formula), def),
              QString::fromLatin1(GetParam().words));
}

INSTANTIATE_TEST_SUITE_P(
    Formulas, SelectionWordsTest,
    ::testing::Values(
        WordsCase{"", "Selection: All records"}, WordsCase{"   ", "Selection: All records"},
        WordsCase{"{invoices.vendnumber} = 12", "Selection: Vendor # 12"},
        // A date range by the report's own caption, the dates as dates.
        WordsCase{"{invoices.invdate} >= 20240101 and {invoices.invdate} <= 20241231",
                  "Selection: Date from 01/01/2024 to 12/31/2024"},
        WordsCase{"{invoices.vendnumber} = 7 AND {invoices.invcheckdate} >= 20240301 and "
                  "{invoices.invcheckdate} <= 20240331",
                  "Selection: Vendor # 7; Check date from 03/01/2024 to 03/31/2024"},
        WordsCase{"{invoices.invstatus} >= 1 and {invoices.invstatus} <= 3",
                  "Selection: Invoice status from 1 to 3"},
        // One side of a range, and each other comparison.
        WordsCase{"{invoices.invdate} >= 20240101", "Selection: Date from 01/01/2024"},
        WordsCase{"{invoices.invdate} <= 20240101", "Selection: Date up to 01/01/2024"},
        WordsCase{"{invoices.invamount} > 100", "Selection: Amount after 100"},
        WordsCase{"{invoices.invamount} < 100", "Selection: Amount before 100"},
        WordsCase{"{invoices.invstatus} <> 4", "Selection: Invoice status not 4"},
        // A text, its doubled apostrophe shown once; a field without a caption by its name.
        WordsCase{"{invoices.invproduct} = 'Baker''s paper'",
                  "Selection: invproduct Baker's paper"},
        // Not a date: a number of another length in a date field.
        WordsCase{"{invoices.invdate} = 0", "Selection: Date 0"},
        WordsCase{"{invoices.invdate} = 20241341", "Selection: Date 20241341"},
        // Any other shape is shown as written.
        WordsCase{"{invoices.vendnumber} = 1 or {invoices.vendnumber} = 2",
                  "Selection: {invoices.vendnumber} = 1 or {invoices.vendnumber} = 2"},
        WordsCase{"({invoices.vendnumber} = 1)", "Selection: ({invoices.vendnumber} = 1)"}));

} // namespace
