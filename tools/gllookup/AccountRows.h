#pragma once

#include <QList>
#include <QString>

class PickerIndex;
struct PickerColumn;

// The account picker's list: the chart of accounts in gl.mdb (number, name, statement
// description, type).
namespace AccountRows {

QList<PickerColumn> columns();
// Copies the accounts of the company in the folder (gl.mdb, on either engine) into the index.
// Throws DbError when the database cannot be read.
void load(PickerIndex &index, const QString &folder);

} // namespace AccountRows
