#pragma once

#include "yearend/YearEndCheck.h"

#include <QRectF>
#include <QString>

#include <vector>

struct PayerRecord;

// Copy B of a 1099 form on plain paper, the substitute statement a recipient may be given: the
// whole form drawn, one vendor a page, the recipient's tax id shown by its last four digits only.
namespace RecipientCopies {

// What a box of the form holds.
enum class Item {
    None, // a box drawn with its caption only
    Payer,
    PayerTin,
    RecipientTin,
    RecipientName,
    Street,
    CityLine,
    Account,
    Amount,              // the vendor's amount, whatever its 1099 type
    AmountIfRents,       // the amount of a vendor of 1099 type 1 (MISC box 1, rents)
    AmountIfOtherIncome, // the amount of a vendor of 1099 type 4 (MISC box 3, other income)
    Year,
};

struct Box {
    QRectF inches; // on the form, from its top left corner
    const char *caption;
    Item item;
};

struct Layout {
    TaxForm form;
    const char *formName;  // "1099-NEC"
    const char *title;     // "Nonemployee Compensation"
    const char *revision;  // "(Rev. January 2025)"
    const char *ombNumber; // "1545-0116"
    const char *website;   // "www.irs.gov/Form1099NEC"
    double widthInches;
    double heightInches; // the frame ends 0.6 inch above, the form's footer line below it
    std::vector<Box> boxes;
};

// Where the form sits on the letter-size page: its top left corner, in inches.
constexpr double leftInches = 0.6;
constexpr double topInches = 0.5;

// The layout of a form's Copy B; nullptr for a form without one here.
const Layout *layout(TaxForm form);

// Writes the PDF, one page per vendor that gets the form. False, with the reason, when the form
// has no layout, there is no vendor, or the file cannot be written; nothing is written then.
bool write(const YearEndCheck::Result &result, const PayerRecord &payer, const QString &pdfPath,
           QString &why);

} // namespace RecipientCopies
