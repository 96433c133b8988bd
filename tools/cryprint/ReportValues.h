#pragma once

#include "ReportDefinition.h"

#include <QString>
#include <QVariant>

// How a report shows a value of each format.
namespace ReportValues {

// Money as 1,234.56 (and -1,234.56); dates (YYYYMMDD) as MM/DD/YYYY, none for 0; 1099 types
// by form name.
QString shown(const QVariant &value, ReportDefinition::Format format);
// The same for a CSV file: money without thousands separators.
QString forCsv(const QVariant &value, ReportDefinition::Format format);
// Money in ten-thousandths, so that sums add up exactly.
long long money(const QVariant &value);
QString moneyText(long long tenThousandths, bool separators = true);
// Whether payments of that total to a vendor of that 1099 type reach the form's threshold:
// MISC (types 1 and 4) and INT at 600.00 or more, DIV and NEC above 600.00.
bool reportable(int type1099, long long tenThousandths);
QString typeName(int type1099);

} // namespace ReportValues
