#include "yearend/YearEndCheck.h"
#include "data/Databases.h"
#include "support/DataFolder.h"

#include <gtest/gtest.h>

namespace {

using Rule = YearEndCheck::Rule;

// One vendor as the vendor file holds it.
struct Vendor {
    const char *name;
    const char *address1;
    const char *city;
    const char *state;
    const char *zip;
    const char *taxId;
    int type;
    double ytd;
};

// A vendor that gets the 2026 1099-NEC and has nothing wrong.
constexpr Vendor good{"Good Builders", "1 Main St", "Peoria", "IL", "61602", "95-1234567", 5, 2500};

void insert(DataFolder &folder, int number, const Vendor &v)
{
    auto quoted = [](const char *text) {
        return QLatin1Char('\'') + QString::fromUtf8(text).replace("'", "''") + QLatin1Char('\'');
    };
    folder.exec("ap.mdb",
                QStringLiteral("insert into vendors (vendnumber, vendname, vendaddr1, vendcity, "
                               "vendstate, vendzip, vendtaxid, vend1099type, vendytd) values (%1, ")
                        .arg(number) +
                    quoted(v.name) + "," + quoted(v.address1) + "," + quoted(v.city) + "," +
                    quoted(v.state) + "," + quoted(v.zip) + "," + quoted(v.taxId) + "," +
                    QString::number(v.type) + "," + QString::number(v.ytd, 'f', 2) + ")");
}

struct Case {
    const char *what;
    Vendor vendor;
    bool getsForm;
    std::vector<Rule> rules;
};

std::ostream &operator<<(std::ostream &out, const Case &c)
{
    return out << c.what;
}

class YearEndCheckRule : public testing::TestWithParam<Case> {
protected:
    DataFolder folder;
};

TEST_P(YearEndCheckRule, EachVendorIsListedWithItsProblemsForTheNec2026)
{
    const Case c = GetParam();
    insert(folder, 7, c.vendor);
    Databases dbs;
    const YearEndCheck::Result result = YearEndCheck(dbs).run(TaxForm::Nonemployee, 2026);
    EXPECT_EQ(result.threshold, 2000);
    ASSERT_EQ(result.recipients.size(), c.getsForm ? 1u : 0u);
    if (c.getsForm) {
        EXPECT_EQ(result.recipients[0].vendor, 7);
        EXPECT_DOUBLE_EQ(result.recipients[0].amount, c.vendor.ytd);
    }
    std::vector<Rule> rules;
    for (const YearEndCheck::Problem &p : result.problems) {
        EXPECT_EQ(p.vendor, 7);
        rules.push_back(p.rule);
    }
    EXPECT_EQ(rules, c.rules);
}

INSTANTIATE_TEST_SUITE_P(
    EveryRule, YearEndCheckRule,
    testing::Values(Case{"good", good, true, {}},
                    Case{"just under the threshold",
                         {"Short", "1 Main St", "Peoria", "IL", "61602", "", 5, 1999.99},
                         false,
                         {}},
                    Case{"at the threshold with an SSN",
                         {"Sam Smith", "1 Main St", "Peoria", "IL", "61602-1234", "123-45-6789", 5,
                          2000},
                         true,
                         {}},
                    Case{"no tax id",
                         {"A", "1 Main St", "Peoria", "IL", "61602", "", 5, 2000},
                         true,
                         {Rule::TaxId}},
                    Case{"tax id with a letter",
                         {"A", "1 Main St", "Peoria", "IL", "61602", "95-123456X", 5, 2000},
                         true,
                         {Rule::TaxId}},
                    Case{"tax id of 8 digits",
                         {"A", "1 Main St", "Peoria", "IL", "61602", "95-123456", 5, 2000},
                         true,
                         {Rule::TaxId}},
                    Case{"SSN area 666",
                         {"A", "1 Main St", "Peoria", "IL", "61602", "666-45-6789", 5, 2000},
                         true,
                         {Rule::TaxId}},
                    Case{"EIN prefix 89",
                         {"A", "1 Main St", "Peoria", "IL", "61602", "89-1234567", 5, 2000},
                         true,
                         {Rule::TaxId}},
                    Case{"no name",
                         {"", "1 Main St", "Peoria", "IL", "61602", "95-1234567", 5, 2000},
                         true,
                         {Rule::Name}},
                    Case{"no street",
                         {"A", "", "Peoria", "IL", "61602", "95-1234567", 5, 2000},
                         true,
                         {Rule::Address}},
                    Case{"no city",
                         {"A", "1 Main St", "", "IL", "61602", "95-1234567", 5, 2000},
                         true,
                         {Rule::Address}},
                    Case{"no state",
                         {"A", "1 Main St", "Peoria", "", "61602", "95-1234567", 5, 2000},
                         true,
                         {Rule::Address}},
                    Case{"no ZIP",
                         {"A", "1 Main St", "Peoria", "IL", "", "95-1234567", 5, 2000},
                         true,
                         {Rule::Address}},
                    Case{"Canadian province",
                         {"A", "1 Main St", "Ottawa", "ON", "K1A 0B6", "95-1234567", 5, 2000},
                         true,
                         {Rule::Foreign}},
                    Case{"US state with a Canadian postal code",
                         {"A", "1 Main St", "Peoria", "IL", "K1A 0B6", "95-1234567", 5, 2000},
                         true,
                         {Rule::Foreign}},
                    Case{"Puerto Rico",
                         {"A", "1 Calle", "San Juan", "PR", "00901", "95-1234567", 5, 2000},
                         true,
                         {}},
                    Case{"type None at the threshold",
                         {"A", "1 Main St", "Peoria", "IL", "61602", "95-1234567", 0, 2000},
                         false,
                         {Rule::TypeNone}},
                    Case{"type None under the threshold",
                         {"A", "1 Main St", "Peoria", "IL", "61602", "95-1234567", 0, 1999.99},
                         false,
                         {}},
                    Case{"type 6",
                         {"A", "1 Main St", "Peoria", "IL", "61602", "95-1234567", 6, 2000},
                         false,
                         {Rule::UnknownType}},
                    Case{"type -1",
                         {"A", "1 Main St", "Peoria", "IL", "61602", "95-1234567", -1, 0},
                         false,
                         {Rule::UnknownType}},
                    Case{"a MISC vendor is not on the NEC",
                         {"A", "1 Main St", "Peoria", "IL", "61602", "bad", 1, 5000},
                         false,
                         {}}));

class YearEndCheckTest : public testing::Test {
protected:
    DataFolder folder;
};

TEST_F(YearEndCheckTest, TheSameTaxIdOnTwoVendorsIsReportedOnEachAndADifferentOneIsNot)
{
    insert(folder, 1, good);
    Vendor twin = good;
    twin.name = "Good Builders Inc";
    twin.taxId = "951234567"; // the same digits written without the dash
    twin.ytd = 3000;
    insert(folder, 2, twin);
    Vendor other = good;
    other.taxId = "95-7654321";
    insert(folder, 3, other);
    Databases dbs;
    const YearEndCheck::Result result = YearEndCheck(dbs).run(TaxForm::Nonemployee, 2026);
    ASSERT_EQ(result.recipients.size(), 3u);
    ASSERT_EQ(result.problems.size(), 3u);
    EXPECT_EQ(result.problems[0].vendor, 1);
    EXPECT_EQ(result.problems[0].rule, Rule::DuplicateId);
    EXPECT_EQ(result.problems[0].text, "the same tax id as vendor 2 (Good Builders Inc)");
    EXPECT_EQ(result.problems[1].vendor, 2);
    EXPECT_EQ(result.problems[1].rule, Rule::TaxId); // no dash: neither SSN nor EIN
    EXPECT_EQ(result.problems[2].vendor, 2);
    EXPECT_EQ(result.problems[2].rule, Rule::DuplicateId);
    EXPECT_EQ(result.problems[2].text, "the same tax id as vendor 1 (Good Builders)");
}

TEST_F(YearEndCheckTest, TheMiscFormTakesBothMiscTypesAndTheThresholdOfItsYear)
{
    Vendor misc = good;
    misc.type = 1;
    misc.ytd = 600;
    insert(folder, 1, misc);
    misc.type = 4;
    misc.ytd = 599.99;
    insert(folder, 2, misc);
    misc.ytd = 600;
    insert(folder, 3, misc);
    Databases dbs;
    const YearEndCheck::Result y2025 = YearEndCheck(dbs).run(TaxForm::Misc, 2025);
    ASSERT_EQ(y2025.recipients.size(), 2u);
    EXPECT_EQ(y2025.recipients[0].vendor, 1);
    EXPECT_EQ(y2025.recipients[1].vendor, 3);
    EXPECT_TRUE(YearEndCheck(dbs).run(TaxForm::Misc, 2026).recipients.empty());
}

TEST_F(YearEndCheckTest, InterestAndDividendsStartAtTenDollars)
{
    Vendor bank = good;
    bank.type = 2;
    bank.ytd = 10;
    insert(folder, 1, bank);
    bank.ytd = 9.99;
    insert(folder, 2, bank);
    bank.type = 3;
    bank.ytd = 10;
    insert(folder, 3, bank);
    Databases dbs;
    const YearEndCheck::Result interest = YearEndCheck(dbs).run(TaxForm::Interest, 2026);
    ASSERT_EQ(interest.recipients.size(), 1u);
    EXPECT_EQ(interest.recipients[0].vendor, 1);
    const YearEndCheck::Result dividends = YearEndCheck(dbs).run(TaxForm::Dividends, 2026);
    ASSERT_EQ(dividends.recipients.size(), 1u);
    EXPECT_EQ(dividends.recipients[0].vendor, 3);
}

} // namespace
