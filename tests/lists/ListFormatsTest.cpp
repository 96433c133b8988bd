#include "lists/ListFormats.h"

#include <QVariant>

#include <gtest/gtest.h>

namespace {

struct Case {
    QVariant value;
    const char *shown;
};

void PrintTo(const Case &c, std::ostream *os)
{
    *os << c.value.toString().toStdString() << " -> \"" << c.shown << '"';
}

class DateFormatTest : public ::testing::TestWithParam<Case> {};

TEST_P(DateFormatTest, ShowsTheDateReadably)
{
    EXPECT_EQ(ListFormats::date(GetParam().value), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(Dates, DateFormatTest,
                         ::testing::Values(Case{20261121, "11/21/2026"},
                                           Case{20260101, "01/01/2026"}, Case{0, ""},
                                           Case{QVariant(), ""}, Case{20261399, "20261399"},
                                           Case{20240229, "02/29/2024"}));

struct Amount {
    double value;
    const char *shown;
};

void PrintTo(const Amount &a, std::ostream *os)
{
    *os << a.value << " -> \"" << a.shown << '"';
}

class CurrencyFormatTest : public ::testing::TestWithParam<Amount> {};

TEST_P(CurrencyFormatTest, ShowsMoneyAsCurrency)
{
    EXPECT_EQ(ListFormats::currency(GetParam().value), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(Amounts, CurrencyFormatTest,
                         ::testing::Values(Amount{1234.5, "$1,234.50"}, Amount{0, "$0.00"},
                                           Amount{0.005, "$0.01"},
                                           Amount{1234567.891, "$1,234,567.89"},
                                           Amount{-12, "($12.00)"}, Amount{-0.001, "$0.00"},
                                           Amount{599.9999, "$600.00"}));

struct Account {
    double value;
    const char *shown;
};

void PrintTo(const Account &a, std::ostream *os)
{
    *os << a.value << " -> \"" << a.shown << '"';
}

class AccountFormatTest : public ::testing::TestWithParam<Account> {};

TEST_P(AccountFormatTest, ShowsThreeDecimalsAlways)
{
    EXPECT_EQ(ListFormats::accountNumber(GetParam().value), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(Accounts, AccountFormatTest,
                         ::testing::Values(Account{5000, "5000.000"}, Account{5000.25, "5000.250"},
                                           Account{1, "1.000"}, Account{12345.678, "12345.678"},
                                           Account{123456, "123456.000"}));

struct StatusCase {
    QVariant value;
    const char *shown;
};

void PrintTo(const StatusCase &c, std::ostream *os)
{
    *os << c.value.toString().toStdString() << " -> \"" << c.shown << '"';
}

class InvoiceStatusFormatTest : public ::testing::TestWithParam<StatusCase> {};

TEST_P(InvoiceStatusFormatTest, ShowsTheCodeWithItsName)
{
    EXPECT_EQ(ListFormats::invoiceStatus(GetParam().value), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(Codes, InvoiceStatusFormatTest,
                         ::testing::Values(StatusCase{-1, "-1"}, StatusCase{0, "0"},
                                           StatusCase{1, "1  Open"}, StatusCase{2, "2  Open"},
                                           StatusCase{3, "3  Open"}, StatusCase{4, "4  Paid"},
                                           StatusCase{9, "9  Paid"}, StatusCase{3.5, "3.5  Paid"},
                                           StatusCase{0.5, "0.5"}));

} // namespace
