#pragma once

#include <QString>

// Whether a row of that number is still in the table of the company's database (ap.mdb,
// gl.mdb ...) in the folder, on either engine: one look-up by the table's key. Throws DbError
// when the database cannot be read.
bool stillThere(const QString &folder, const QString &fileName, const QString &table,
                const QString &keyColumn, const QString &number);
