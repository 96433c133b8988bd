#pragma once

#include "SourceRows.h"
#include "TablePlan.h"

#include <QString>
#include <QVariant>

// One value of the Access file as the destination column keeps it. Dates of the module's
// columns become YYYYMMDD numbers, its money is rounded to four decimals; a value that has no
// such form is refused with the reason.
struct Converted {
    QVariant value;
    QString refusal;          // not empty: the value cannot be kept
    bool timeDropped = false; // a date of the module's kept its day, not its time
};

namespace ValueConversion {
Converted convert(const ColumnPlan &column, const SourceValue &value);
// The value as a message shows it.
QString shown(const SourceValue &value);
} // namespace ValueConversion
