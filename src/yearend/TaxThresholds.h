#pragma once

#include "yearend/TaxForms.h"

#include <QMap>
#include <QString>

// The amount paid in a tax year from which the law requires a 1099 form: the smallest amount
// that gets a form ("$600 or more").
//
// 1099-NEC and 1099-MISC: $600 for payments made through 2025, $2,000 for payments made in 2026
// (26 U.S.C. 6041(a) as amended by Public Law 119-21, section 70433), indexed for inflation for
// later years in multiples of $100; those later amounts are published by the IRS each year and
// come from the site's setting (YearEndSettings), as the law gives no figure for them here.
// 1099-INT and 1099-DIV: $10 (26 U.S.C. 6049 and 6042), in every year.
namespace TaxThresholds {

// The first tax year whose NEC and MISC amount is indexed.
constexpr int firstIndexedYear = 2027;

// The legal threshold in dollars. `indexed` holds the NEC and MISC amounts of the years from
// firstIndexedYear on (year -> dollars); a later year without its own amount takes the amount
// of the latest year before it that has one, and $2,000 when none has.
double legal(TaxForm form, int taxYear, const QMap<int, double> &indexed = {});

// Whether an amount paid in the year gets the form: at or above the threshold, the amount taken
// to the cent first so that 1999.999999 is not short of 2000.
bool reaches(double amount, TaxForm form, int taxYear, const QMap<int, double> &indexed = {});

// "$600", "$2,000", "$10".
QString dollars(double amount);

} // namespace TaxThresholds
