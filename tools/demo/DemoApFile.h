#pragma once

#include <QtGlobal>

#include <cstdint>

class QDir;

namespace Demo {

class Calendar;

// What went into ap.mdb.
struct ApSummary {
    int vendors = 0;
    int firstVendor = 0;
    int lastVendor = 0;
    qint64 invoices = 0;
    qint64 openInvoices = 0; // status 1-3
    qint64 paidInvoices = 0; // status 4 and 5
    qint64 heldInvoices = 0; // status 0
    int checks = 0;
    int firstCheck = 0;
    int lastCheck = 0;
    int notes = 0;
    int userDefined = 0;
    int busiestVendor = 0; // the vendor given a fixed large number of invoices; 0 when none
    int busiestInvoices = 0;
};

// Writes ap.mdb: vendors, their invoices and the checks that paid them, notes and user-defined
// data. With `busiestCount` not negative, the first vendor gets that many of the invoices.
ApSummary writeAp(const QDir &folder, int vendorCount, int invoiceCount, int busiestCount,
                  std::uint64_t seed, const Calendar &calendar);

} // namespace Demo
