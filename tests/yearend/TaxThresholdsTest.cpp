#include "yearend/TaxThresholds.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    TaxForm form;
    int year;
    double amount;
    bool getsForm;
};

std::ostream &operator<<(std::ostream &out, const Case &c)
{
    return out << TaxForms::title(c.form).toStdString() << " " << c.year << " " << c.amount;
}

class ThresholdBoundary : public testing::TestWithParam<Case> {};

TEST_P(ThresholdBoundary, AnAmountGetsTheFormFromTheYearsLegalThresholdOn)
{
    const Case c = GetParam();
    EXPECT_EQ(TaxThresholds::reaches(c.amount, c.form, c.year), c.getsForm);
}

INSTANTIATE_TEST_SUITE_P(
    EachFormAndYear, ThresholdBoundary,
    testing::Values(
        Case{TaxForm::Nonemployee, 2025, 599.99, false},
        Case{TaxForm::Nonemployee, 2025, 600.00, true},
        Case{TaxForm::Nonemployee, 2024, 599.99, false},
        Case{TaxForm::Nonemployee, 2024, 600.00, true},
        Case{TaxForm::Nonemployee, 2026, 1999.99, false},
        Case{TaxForm::Nonemployee, 2026, 2000.00, true}, Case{TaxForm::Misc, 2025, 599.99, false},
        Case{TaxForm::Misc, 2025, 600.00, true}, Case{TaxForm::Misc, 2026, 1999.99, false},
        Case{TaxForm::Misc, 2026, 2000.00, true}, Case{TaxForm::Interest, 2025, 9.99, false},
        Case{TaxForm::Interest, 2025, 10.00, true}, Case{TaxForm::Interest, 2026, 9.99, false},
        Case{TaxForm::Interest, 2026, 10.00, true}, Case{TaxForm::Dividends, 2025, 9.99, false},
        Case{TaxForm::Dividends, 2025, 10.00, true}, Case{TaxForm::Dividends, 2026, 9.99, false},
        Case{TaxForm::Dividends, 2026, 10.00, true},
        // A later year without a published amount keeps $2,000.
        Case{TaxForm::Nonemployee, 2027, 1999.99, false},
        Case{TaxForm::Nonemployee, 2027, 2000.00, true}));

TEST(TaxThresholds, TheTableGivesEachFormsAmountPerYear)
{
    EXPECT_EQ(TaxThresholds::legal(TaxForm::Nonemployee, 2025), 600);
    EXPECT_EQ(TaxThresholds::legal(TaxForm::Misc, 2025), 600);
    EXPECT_EQ(TaxThresholds::legal(TaxForm::Nonemployee, 2026), 2000);
    EXPECT_EQ(TaxThresholds::legal(TaxForm::Misc, 2026), 2000);
    EXPECT_EQ(TaxThresholds::legal(TaxForm::Interest, 2026), 10);
    EXPECT_EQ(TaxThresholds::legal(TaxForm::Dividends, 2019), 10);
}

TEST(TaxThresholds, IndexedAmountsOfTheSiteSettingApplyFromTheirYearOn)
{
    const QMap<int, double> indexed{{2027, 2100}, {2029, 2200}};
    EXPECT_EQ(TaxThresholds::legal(TaxForm::Nonemployee, 2026, indexed), 2000);
    EXPECT_EQ(TaxThresholds::legal(TaxForm::Nonemployee, 2027, indexed), 2100);
    EXPECT_EQ(TaxThresholds::legal(TaxForm::Misc, 2028, indexed), 2100);
    EXPECT_EQ(TaxThresholds::legal(TaxForm::Misc, 2029, indexed), 2200);
    EXPECT_EQ(TaxThresholds::legal(TaxForm::Interest, 2029, indexed), 10);
    EXPECT_FALSE(TaxThresholds::reaches(2099.99, TaxForm::Nonemployee, 2027, indexed));
    EXPECT_TRUE(TaxThresholds::reaches(2100.00, TaxForm::Nonemployee, 2027, indexed));
}

TEST(TaxThresholds, DollarsAreWrittenWithGroupingAndNoCents)
{
    EXPECT_EQ(TaxThresholds::dollars(600), "$600");
    EXPECT_EQ(TaxThresholds::dollars(2000), "$2,000");
    EXPECT_EQ(TaxThresholds::dollars(10), "$10");
}

} // namespace
