#pragma once

#include <QString>

// The vendor's federal tax id (`vendtaxid`) as the 1099 year end reads it.
//
// Whether an id is a social security number or an employer identification number is told from
// where its dashes are, as the vendor file has no column for it: "###-##-####" is an SSN,
// "##-#######" an EIN; nine digits written any other way (no dashes, "12-345-6789") do not say
// which, and the year-end check asks for the id to be written in one of the two forms.
namespace TaxIds {

enum class Kind { Ssn, Ein, Unknown };

// What is wrong with an id, in the order the rules are applied.
enum class Fault {
    None,
    Missing,
    NotNineDigits, // after removing "-": letters, blanks, 8 or 10 digits
    ImpossibleSsn, // area 000, 666 or 900-999, group 00 or serial 0000
    ImpossibleEin, // a prefix the IRS never assigns
    KindUnknown,   // nine digits, but the dashes tell neither SSN nor EIN
};

Kind kindOf(const QString &taxId);
// The id trimmed, with every "-" removed.
QString digits(const QString &taxId);
Fault fault(const QString &taxId);
// Why an id is wrong, for the check's list ("" for Fault::None).
QString explain(Fault fault, const QString &taxId);
// The id as a recipient copy may show it: only the last four digits ("***-**-6789" for an SSN,
// "**-***6789" for an EIN, "*****6789" when the kind is not known).
QString masked(const QString &taxId);

} // namespace TaxIds
