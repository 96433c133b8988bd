#pragma once

#include "yearend/YearEndCheck.h"

#include <QString>
#include <QStringList>

struct PayerRecord;

// The CSV files for the IRIS Taxpayer Portal's upload of one form and tax year: the header row
// of the form's template, then one row per vendor that gets the form, split into files of at
// most the template's row limit. Nothing is written when the payer or a vendor's tax id cannot
// be filed; the reasons say what to correct.
namespace IrisExport {

// Why the files cannot be made ("" items none): no template for the form and year, a company
// record without a usable federal id, vendors whose tax ids cannot be filed.
QStringList refusals(const YearEndCheck::Result &result, const PayerRecord &payer);

// Why the forms of the check cannot be issued at all, on paper or in a file: a company record
// without a usable federal id, vendors whose tax ids cannot be filed.
QStringList taxIdRefusals(const YearEndCheck::Result &result, const PayerRecord &payer);

// The text of each file (CRLF line ends, UTF-8), the header row in each.
QStringList files(const YearEndCheck::Result &result, const PayerRecord &payer);

// The name of each file: `path` itself for a single file; with more, "-1", "-2" ... before its
// extension.
QStringList fileNames(const QString &path, int count);

// The default file name: "iris-1099-nec-2026.csv".
QString defaultPath(TaxForm form, int taxYear);

// One CSV field, quoted when it holds a comma, a quote or a line end.
QString csvField(const QString &value);

} // namespace IrisExport
