#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <vector>

// The word lists the demo company is made of: people, places, kinds of business and what they
// sell, and the lines of vendor notes.
namespace Demo {

struct Place {
    QString city;
    QString state;  // state or province, two letters
    QString postal; // first three digits of the ZIP code, or the postal code's first half
    QString areaCode;
    bool canada = false;
    bool french = false; // French-speaking: vendor names and streets are often French
};

// A kind of business the organisation buys from.
struct Trade {
    QStringList words;       // "Printing", "Press" as in "Miller Printing"
    QStringList frenchWords; // "Imprimerie" as in "Imprimerie Tremblay"; may be empty
    double glAccount;        // the expense account its invoices are posted to
    QStringList products;    // what its invoices are for
    int minAmount;           // usual invoice amount, whole dollars
    int maxAmount;
    QList<int> forms;       // 1099 types such a vendor may have
    bool person = false;    // a person rather than a company ("Janet Morales")
    bool ownerName = false; // may be named after its owner ("Mike's Plumbing")
};

namespace Words {
const QStringList &givenNames();
const QStringList &surnames(); // some with apostrophes: O'Brien, D'Amico
const QStringList &frenchGivenNames();
const QStringList &frenchSurnames();
const QStringList &companyPrefixes(); // "Acme", "Northern Lights", "Prairie"
const QStringList &canadianPrefixes();
const QStringList &streets(); // in the US
const QStringList &canadianStreets();
const QStringList &streetKinds();     // "Street", "Avenue"
const QStringList &frenchStreets();   // "rue Saint-Denis"
const std::vector<Place> &usPlaces(); // the first is the organisation's own city
const std::vector<Place> &canadianPlaces();
const std::vector<Trade> &trades();
const QStringList &noteLines(); // may hold %1 for a date and %2 for a person
const QStringList &freeMailDomains();
} // namespace Words

} // namespace Demo
