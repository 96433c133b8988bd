#pragma once

#include <QString>

#include <optional>

// The federal 1099 forms the module issues, numbered as the vendor file's 1099 type numbers them
// (type 4, the second MISC code, belongs to the MISC form).
enum class TaxForm { Misc = 1, Interest = 2, Dividends = 3, Nonemployee = 5 };

namespace TaxForms {

// "1099-NEC" and the like.
QString title(TaxForm form);
// The form named on a command line: NEC, MISC, INT or DIV (any case); nothing for another word.
std::optional<TaxForm> fromName(const QString &name);
// Whether a vendor of that 1099 type gets that form.
bool issuedFor(TaxForm form, int vendorType);
// The types the vendor file knows: 0 none, 1 MISC, 2 INT, 3 DIV, 4 the second MISC code, 5 NEC.
bool knownType(int vendorType);

} // namespace TaxForms
