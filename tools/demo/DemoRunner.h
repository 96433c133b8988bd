#pragma once

#include <QString>

namespace Demo {

// Puts the report runner into the data folder under the suite's name, cryprint.exe (a link to
// the installed or built program), and the report definitions beside it, so that the module's
// reports work on the company. Returns a line for the summary; it says so when either is not
// found.
QString placeReportRunner(const QString &folder, const QString &programFolder);

// Puts the vendor-number utility into the data folder under the suite's name, chanum.exe (a link
// to the installed or built program). Returns a line for the summary.
QString placeNumberUtility(const QString &folder, const QString &programFolder);

} // namespace Demo
