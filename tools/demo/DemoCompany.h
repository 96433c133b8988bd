#pragma once

#include "DemoApFile.h"

#include <QString>
#include <QStringList>

#include <cstdint>

namespace Demo {

// The vendor given a fixed large number of invoices in a big company, for timing the lists.
constexpr int busyVendorInvoices = 20000;
constexpr int busyVendorFromInvoices = 1000000;
constexpr int defaultVendors = 300;
constexpr int invoicesPerVendor = 12;

struct Options {
    QString folder;
    int vendors = defaultVendors;
    int invoices = -1; // -1: invoicesPerVendor for each vendor (and bigVendor's share)
    // The first vendor's number of invoices; -1: busyVendorInvoices in a company of
    // busyVendorFromInvoices invoices or more, otherwise an ordinary share.
    int bigVendor = -1;
    std::uint64_t seed = 1;
    int year = 0; // the books run to the end of this year; 0: the current year
};

struct Summary {
    QString folder; // absolute
    int year = 0;
    QStringList files; // in the order written
    int staff = 0;
    int accounts = 0;
    int arAccounts = 0;
    int employees = 0;
    int members = 0;
    ApSummary ap;
    double seconds = 0;
};

// Writes a complete data folder for the module: the database files, the 1099 layouts and the
// vendor screen's help text. The same options give the same files. Throws Demo::Error.
Summary generate(const Options &options);
// A few lines for the person who ran it.
QString describe(const Summary &summary);

} // namespace Demo
