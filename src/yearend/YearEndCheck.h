#pragma once

#include "yearend/TaxForms.h"

#include <QMap>
#include <QString>

#include <vector>

class Databases;

// The check before the 1099 forms of a tax year are printed or filed: every vendor that gets
// the form, with its amount, and every problem in the vendor file that would make a form wrong
// or missing. It reads the vendor file through the data layer and changes nothing.
class YearEndCheck {
public:
    struct Recipient {
        long long vendor = 0;
        int type = 0; // the vendor's 1099 type (1 or 4 on the MISC form)
        QString name;
        QString address1;
        QString address2;
        QString city;
        QString state;
        QString zip;
        QString taxId; // as the vendor file holds it, trimmed
        double amount = 0;
    };
    enum class Rule {
        TaxId,       // missing, not 9 digits, impossible SSN or EIN, kind not shown
        Name,        // no name
        Address,     // street, city, state or ZIP missing
        Foreign,     // a state or ZIP that is not a US one
        UnknownType, // a 1099 type outside 0-5
        TypeNone,    // paid at least the threshold with 1099 type None
        DuplicateId, // the same tax id on another vendor
    };
    struct Problem {
        long long vendor = 0;
        QString name;
        Rule rule = Rule::TaxId;
        QString text;
    };
    struct Result {
        TaxForm form = TaxForm::Nonemployee;
        int year = 0;
        double threshold = 0;
        std::vector<Recipient> recipients; // by vendor number
        std::vector<Problem> problems;     // by vendor number, then rule
    };

    explicit YearEndCheck(Databases &databases) : m_databases(databases) {}

    // indexed: the site's NEC and MISC amounts of later years (YearEndSettings).
    Result run(TaxForm form, int taxYear, const QMap<int, double> &indexed = {});

    // Whether a state and ZIP are a US address (the states, DC, the territories and the
    // military post offices; a ZIP of 5 or 9 digits).
    static bool usAddress(const QString &state, const QString &zip);

private:
    Databases &m_databases;
};
