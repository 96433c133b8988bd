#include "yearend/IrisTemplates.h"

namespace IrisTemplates {

// Where these come from, and how sure they are.
//
// The IRS publishes one CSV template per form and tax year inside the IRIS Taxpayer Portal
// (Publication 5717, "IRIS Taxpayer Portal User Guide", describes the upload). The IRS's own
// template files and pages could not be read while this was written. The header row below is
// therefore NOT copied from the IRS's template: it follows the data groups that public
// restatements of the template list (payer TIN, name and address; recipient TIN type, TIN, name
// and address; account number; the form's boxes: boomtax.com, "IRS IRIS CSV Upload Template
// Guide", and finchcontext.com, "Build IRS 1099 E-File (IRIS CSV / A2A XML)", both read in
// November 2026) with the box names printed on the forms themselves. Before the first upload of
// a tax year, compare it with the template downloaded from the portal for that form and year and
// correct the entry here: it is the only place to change.
//
// The row limit: Publication 5717 (Rev. 1-2026) as restated by standard-deduction.com says a
// submission holds up to 100 forms; 1099fire.com reports 100 per CSV file, raised to 250 from
// tax year 2025. The IRS's own statement could not be read; 100 is kept because a file of 100
// rows is accepted under either statement. Raise it here once the portal's own text says 250.
constexpr int returnsPerFile = 100;

namespace {

std::vector<Column> withBoxes(std::initializer_list<Column> boxes)
{
    std::vector<Column> columns{
        {"Tax Year", Field::TaxYear},
        {"Payer TIN Type", Field::PayerTinType},
        {"Payer TIN", Field::PayerTin},
        {"Payer Name Line 1", Field::PayerName},
        {"Payer Address Line 1", Field::PayerAddress1},
        {"Payer Address Line 2", Field::PayerAddress2},
        {"Payer City", Field::PayerCity},
        {"Payer State", Field::PayerState},
        {"Payer ZIP Code", Field::PayerZip},
        {"Recipient TIN Type", Field::RecipientTinType},
        {"Recipient TIN", Field::RecipientTin},
        {"Recipient Name Line 1", Field::RecipientName},
        {"Recipient Address Line 1", Field::RecipientAddress1},
        {"Recipient Address Line 2", Field::RecipientAddress2},
        {"Recipient City", Field::RecipientCity},
        {"Recipient State", Field::RecipientState},
        {"Recipient ZIP Code", Field::RecipientZip},
        {"Account Number", Field::AccountNumber},
    };
    columns.insert(columns.end(), boxes);
    return columns;
}

const std::vector<Template> &templates()
{
    static const char *const source =
        "tax year 2026 layout; not verified against the IRS's template file (see above)";
    static const std::vector<Template> all{
        {TaxForm::Nonemployee, 2026, source,
         withBoxes({{"Box 1 Nonemployee Compensation", Field::NonemployeeCompensation}})},
        {TaxForm::Misc, 2026, source,
         withBoxes({{"Box 1 Rents", Field::Rents}, {"Box 3 Other Income", Field::OtherIncome}})},
    };
    return all;
}

} // namespace

int rowLimit()
{
    return returnsPerFile;
}

const Template *find(TaxForm form, int taxYear)
{
    const Template *found = nullptr;
    for (const Template &t : templates())
        if (t.form == form && t.fromYear <= taxYear && (!found || t.fromYear > found->fromYear))
            found = &t;
    return found;
}

} // namespace IrisTemplates
