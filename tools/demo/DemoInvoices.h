#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace Demo {

class Calendar;
class Random;
struct Vendor;

// One invoice as planned before it is written: the amount in cents, the day (Julian day
// number), the weekly check run that paid it and its status.
struct PlannedInvoice {
    qint64 cents = 0;
    int day = 0;
    int run = -1;     // -1 while not paid
    int sequence = 0; // the number part of the invoice number
    int status = 1;   // 1-3 open, 4 and 5 paid, 0 neither
    bool paid() const { return run >= 0; }
    bool open() const { return status >= 1 && status <= 3; }
};

// A vendor's invoices, by date, and the totals they give.
struct InvoicePlan {
    std::vector<PlannedInvoice> invoices;
    int numberStyle = 0; // how the vendor numbers its invoices
    QString numberPrefix;
    qint64 ytdCents = 0;     // paid by checks dated this year
    qint64 currentCents = 0; // open, less than 60 days old at the end of the year
    qint64 bal60Cents = 0;   // open, 60 to 89 days old
    qint64 bal90Cents = 0;   // open, 90 days old or more
};

namespace Invoices {
// How many invoices each of `vendors` vendors gets, `total` in all. The first vendor gets
// `firstCount` of them when that is not negative; a vendor whose flag in `needsOne` is set gets
// at least one while there are enough to go round.
std::vector<int> counts(int total, int firstCount, const std::vector<bool> &needsOne,
                        Random &random);
// The invoices of one vendor. Vendors with a YTD target are paid exactly that this year
// (a target of 0: the vendor was last paid last year); a current-balance target is met by the
// open invoices of the last 60 days.
InvoicePlan plan(const Vendor &vendor, int position, int count, const Calendar &calendar,
                 std::uint64_t seed);
QString invoiceNumber(const InvoicePlan &plan, const PlannedInvoice &invoice,
                      const Calendar &calendar);
// Splits an amount into `parts` positive amounts that add up to it exactly (cents).
std::vector<qint64> split(qint64 cents, int parts, Random &random);
} // namespace Invoices

} // namespace Demo
