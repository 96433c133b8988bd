#pragma once

#include <QString>

// A small company made for the benchmark when no generated one is at hand: the module's files
// with their tables, user BENCH at level 99, a few accounts, 1,000 vendors of ten invoices each
// and vendor 1 with `bigVendorInvoices` invoices and 500 checks. Writes into the current folder.
namespace BenchCompany {
void make(int bigVendorInvoices);
}
