#include "lists/InvoiceLists.h"

#include "vendor/VendorWindow.h"

void InvoiceLists::showUnpaid() {}
void InvoiceLists::showPaid() {}
void InvoiceLists::showChecks() {}
void InvoiceLists::refreshOpenList() {}
void InvoiceLists::refreshChecksIfShown() {}
void InvoiceLists::resortInvoices(int) {}
void InvoiceLists::resortChecks(int) {}
void InvoiceLists::fitColumns() {}
