#pragma once

#include "ReportDefinition.h"

#include <QString>

// The request's selection said in words for a report's heading: "Selection: Vendor # 12;
// Invoice date from 01/31/2024 to 12/31/2024". Each comparison of a field with a value, joined
// by "and", is named by the report's caption for the field (or the field's own name); a date
// field's YYYYMMDD number is shown as a date. A formula of any other shape is shown as it is
// written; an empty one selects "All records".
QString selectionInWords(const QString &formula, const ReportDefinition &def);
