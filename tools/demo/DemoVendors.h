#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace Demo {

class Random;

// One vendor of the demo company. Text left null here is written as a null column.
struct Vendor {
    int number = 0;
    QString name, addr1, addr2, city, state, zip, phone, fax, contact;
    QString contact2Name, contact2Phone, contact2Email, email, cellOther, account, terms;
    double glAccount = 0;
    QString taxId;
    int form1099 = 0;
    int trade = 0; // index into Words::trades()
    bool canada = false;
    // Totals the invoices are made to arrive at, in cents; -1 lets the invoices decide.
    qint64 ytdTarget = -1;     // paid this year
    qint64 currentTarget = -1; // open and less than 60 days old
};

namespace Vendors {
// Vendor numbers for `count` vendors, ascending: from 100 up in steps of 1 to 40, narrower
// steps when that would run past 99999. More than 99,900 vendors start at 1, and beyond 99,999
// vendors the last numbers lie above 99999.
std::vector<int> numbers(int count, Random &random);
// The vendor at a position of the vendor list (0 = the lowest number) of a company of `count`
// vendors. The first is an office supplier without 1099. A few positions spread over the list
// carry fixed profiles (the 1099 boundary
// amounts, names with apostrophes, a Quebec printer) so that every company shows them.
Vendor make(int position, int number, int count, std::uint64_t seed);
// Whether the vendor at that position has totals its invoices must arrive at (it then needs at
// least one invoice).
bool hasTargets(int position, int count);
// A name cut down to what a domain name may hold ("Côté & Fils" gives "cotefils"), at most
// 24 characters.
QString slug(const QString &name);
} // namespace Vendors

} // namespace Demo
