#include "yearend/TaxThresholds.h"

#include <QLocale>

#include <cmath>

namespace {

// One row per change of the law: the NEC and MISC amount from that tax year on.
struct Change {
    int fromYear;
    double amount;
};
constexpr Change necMiscChanges[] = {
    {0, 600},     // 26 U.S.C. 6041(a) before 2026
    {2026, 2000}, // Public Law 119-21, section 70433, for payments made after December 31, 2025
};
constexpr double interestAndDividends = 10; // 26 U.S.C. 6049, 6042

} // namespace

namespace TaxThresholds {

double legal(TaxForm form, int taxYear, const QMap<int, double> &indexed)
{
    if (form == TaxForm::Interest || form == TaxForm::Dividends)
        return interestAndDividends;
    if (taxYear >= firstIndexedYear) {
        auto after = indexed.upperBound(taxYear);
        if (after != indexed.begin()) {
            --after;
            if (after.key() >= firstIndexedYear)
                return after.value();
        }
    }
    double amount = necMiscChanges[0].amount;
    for (const Change &change : necMiscChanges)
        if (taxYear >= change.fromYear)
            amount = change.amount;
    return amount;
}

bool reaches(double amount, TaxForm form, int taxYear, const QMap<int, double> &indexed)
{
    return std::round(amount * 100) >= std::round(legal(form, taxYear, indexed) * 100);
}

QString dollars(double amount)
{
    const QLocale us(QLocale::English, QLocale::UnitedStates);
    const bool whole = amount == static_cast<double>(static_cast<long long>(amount));
    return QLatin1Char('$') +
           (whole ? us.toString(static_cast<long long>(amount)) : us.toString(amount, 'f', 2));
}

} // namespace TaxThresholds
