#include "yearend/TaxIds.h"

#include <gtest/gtest.h>

namespace {

using Fault = TaxIds::Fault;
using Kind = TaxIds::Kind;

struct Case {
    const char *id;
    Fault fault;
    Kind kind;
};

std::ostream &operator<<(std::ostream &out, const Case &c)
{
    return out << '"' << c.id << '"';
}

class TaxIdRule : public testing::TestWithParam<Case> {};

TEST_P(TaxIdRule, EachIdIsJudgedByItsDigitsAndItsDashes)
{
    const Case c = GetParam();
    EXPECT_EQ(TaxIds::fault(QString::fromUtf8(c.id)), c.fault);
    EXPECT_EQ(TaxIds::kindOf(QString::fromUtf8(c.id)), c.kind);
}

INSTANTIATE_TEST_SUITE_P(
    EveryRule, TaxIdRule,
    testing::Values(
        // Possible ids of both kinds, surrounding blanks ignored.
        Case{"123-45-6789", Fault::None, Kind::Ssn}, Case{" 123-45-6789 ", Fault::None, Kind::Ssn},
        Case{"95-1234567", Fault::None, Kind::Ein}, Case{"", Fault::Missing, Kind::Unknown},
        Case{"   ", Fault::Missing, Kind::Unknown},
        // Not nine digits: letters, blanks, 8 and 10 digits.
        Case{"12-345678A", Fault::NotNineDigits, Kind::Unknown},
        Case{"123 45 6789", Fault::NotNineDigits, Kind::Unknown},
        Case{"12-345678", Fault::NotNineDigits, Kind::Unknown},
        Case{"12-34567890", Fault::NotNineDigits, Kind::Unknown},
        Case{"12345678", Fault::NotNineDigits, Kind::Unknown},
        Case{"1234567890", Fault::NotNineDigits, Kind::Unknown},
        // Nine digits whose dashes tell neither kind.
        Case{"123456789", Fault::KindUnknown, Kind::Unknown},
        Case{"12-345-6789", Fault::KindUnknown, Kind::Unknown},
        // SSN areas: 000, 666 and 900-999 never issued; 001, 665, 667 and 899 are.
        Case{"000-12-3456", Fault::ImpossibleSsn, Kind::Ssn},
        Case{"001-12-3456", Fault::None, Kind::Ssn}, Case{"665-12-3456", Fault::None, Kind::Ssn},
        Case{"666-12-3456", Fault::ImpossibleSsn, Kind::Ssn},
        Case{"667-12-3456", Fault::None, Kind::Ssn}, Case{"899-12-3456", Fault::None, Kind::Ssn},
        Case{"900-12-3456", Fault::ImpossibleSsn, Kind::Ssn},
        Case{"999-12-3456", Fault::ImpossibleSsn, Kind::Ssn},
        // SSN group 00 and serial 0000.
        Case{"123-00-4567", Fault::ImpossibleSsn, Kind::Ssn},
        Case{"123-01-4567", Fault::None, Kind::Ssn},
        Case{"123-45-0000", Fault::ImpossibleSsn, Kind::Ssn},
        Case{"123-45-0001", Fault::None, Kind::Ssn},
        // EIN prefixes never assigned, each beside an assigned neighbour.
        Case{"00-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"01-1234567", Fault::None, Kind::Ein}, Case{"06-1234567", Fault::None, Kind::Ein},
        Case{"07-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"08-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"09-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"10-1234567", Fault::None, Kind::Ein}, Case{"16-1234567", Fault::None, Kind::Ein},
        Case{"17-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"18-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"19-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"20-1234567", Fault::None, Kind::Ein}, Case{"27-1234567", Fault::None, Kind::Ein},
        Case{"28-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"29-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"30-1234567", Fault::None, Kind::Ein}, Case{"48-1234567", Fault::None, Kind::Ein},
        Case{"49-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"50-1234567", Fault::None, Kind::Ein}, Case{"68-1234567", Fault::None, Kind::Ein},
        Case{"69-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"70-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"71-1234567", Fault::None, Kind::Ein}, Case{"77-1234567", Fault::None, Kind::Ein},
        Case{"78-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"79-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"80-1234567", Fault::None, Kind::Ein}, Case{"88-1234567", Fault::None, Kind::Ein},
        Case{"89-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"90-1234567", Fault::None, Kind::Ein}, Case{"95-1234567", Fault::None, Kind::Ein},
        Case{"96-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"97-1234567", Fault::ImpossibleEin, Kind::Ein},
        Case{"98-1234567", Fault::None, Kind::Ein}));

TEST(TaxIds, ARecipientCopyShowsOnlyTheLastFourDigits)
{
    EXPECT_EQ(TaxIds::masked("123-45-6789"), "***-**-6789");
    EXPECT_EQ(TaxIds::masked("95-1234567"), "**-***4567");
    EXPECT_EQ(TaxIds::masked("123456789"), "*****6789");
}

TEST(TaxIds, TheReasonNamesTheIdAndTheRule)
{
    EXPECT_EQ(TaxIds::explain(Fault::NotNineDigits, " 12-34567 "),
              "the tax id \"12-34567\" is not 9 digits");
    EXPECT_EQ(TaxIds::explain(Fault::ImpossibleEin, "07-1234567"),
              "the tax id 07-1234567 cannot be an employer identification number (the IRS never "
              "assigns the prefix 07)");
    EXPECT_EQ(TaxIds::explain(Fault::None, "95-1234567"), "");
}

} // namespace
