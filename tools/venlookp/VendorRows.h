#pragma once

#include <QList>
#include <QString>

class PickerIndex;
struct PickerColumn;

// The vendor picker's list: number, name, contact, city, telephone and open balance (the sum of
// the vendor's unpaid invoices, as the vendor screen totals them).
namespace VendorRows {

QList<PickerColumn> columns();
// Copies the vendors of the company in the folder (ap.mdb, on either engine) into the index.
// Throws DbError when the database cannot be read.
void load(PickerIndex &index, const QString &folder);

} // namespace VendorRows
