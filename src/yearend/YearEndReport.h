#pragma once

#include "yearend/YearEndCheck.h"

#include <QString>

struct PayerRecord;

// The year-end check as printable text: a heading with the form, the tax year, its threshold
// and the payer, the vendors that get the form with their amounts and total, then the problems.
// The window prints it and the command writes it, so both say the same.
namespace YearEndReport {

QString text(const YearEndCheck::Result &result, const PayerRecord &payer);

} // namespace YearEndReport
