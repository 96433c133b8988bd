#pragma once

#include "yearend/TaxForms.h"

#include <QString>

#include <vector>

// The column order of the IRIS Taxpayer Portal's CSV upload, per form and tax year, and the
// number of returns one uploaded file may hold. The only place that knows them: a new year's
// template is a new entry in IrisTemplates.cpp.
namespace IrisTemplates {

// What goes into a column.
enum class Field {
    TaxYear,
    PayerTinType,
    PayerTin,
    PayerName,
    PayerAddress1,
    PayerAddress2,
    PayerCity,
    PayerState,
    PayerZip,
    RecipientTinType,
    RecipientTin,
    RecipientName,
    RecipientAddress1,
    RecipientAddress2,
    RecipientCity,
    RecipientState,
    RecipientZip,
    AccountNumber,
    NonemployeeCompensation, // 1099-NEC box 1
    Rents,                   // 1099-MISC box 1: vendors of 1099 type 1
    OtherIncome,             // 1099-MISC box 3: vendors of 1099 type 4
};

struct Column {
    const char *header;
    Field field;
};

struct Template {
    TaxForm form;
    int fromYear; // the first tax year it serves; it serves later years until a newer one
    const char *source;
    std::vector<Column> columns;
};

// Returns of one form in one uploaded file.
int rowLimit();

// The template for the form and tax year; nullptr when there is none (INT, DIV, or a year
// before the first one kept).
const Template *find(TaxForm form, int taxYear);

} // namespace IrisTemplates
