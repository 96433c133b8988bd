#pragma once

#include <QString>

// Puts the report runner into a new company's data folder under the suite's name, cryprint.exe
// (a link to the installed or built program, where the module looks for it), and the report
// definitions beside it, so that the module's reports work on the company. programFolder is
// the folder of the program doing it (the demo generator or the import): the installed runner
// sits beside it, the built one in the build tree's tools/cryprint. With Existing::Keep a runner
// or definition the folder already holds as a file of its own (not a link) is kept. Returns the
// lines for the program's summary; they say so when the runner or the definitions are not found.
enum class Existing { Replace, Keep };
QString placeReportRunner(const QString &folder, const QString &programFolder,
                          Existing existing = Existing::Replace);

// Puts the vendor-number utility into the data folder under the suite's name, chanum.exe (a link
// to the installed or built program, found as the runner is). Returns a line for the summary.
QString placeNumberUtility(const QString &folder, const QString &programFolder,
                           Existing existing = Existing::Replace);

// Puts the version window into the data folder under the suite's name, vinfo32.exe (a link to the
// installed or built program, found as the runner is). Returns a line for the summary.
QString placeVersionWindow(const QString &folder, const QString &programFolder,
                           Existing existing = Existing::Replace);

// Puts the printer set-up into the data folder under the suite's name, prtctrl.exe (a link to the
// installed or built program, found as the runner is). Returns a line for the summary.
QString placePrinterSetup(const QString &folder, const QString &programFolder,
                          Existing existing = Existing::Replace);

// Puts the 1099 layout adjuster into the data folder under the suite's name, fprint.exe (a link to
// the installed or built program, found as the runner is). Returns a line for the summary.
QString placeLayoutAdjuster(const QString &folder, const QString &programFolder,
                            Existing existing = Existing::Replace);

// Puts the help into the data folder: the help viewer vlmohelp.exe and the text editor
// vlmedit.exe (links, found as the runner is), the manual manual-ACCTPAY.pdf (a link to the
// installed or built one) and the plain-text help vendor1.txt (a copy, as the office may add to
// it). Returns the lines for the summary.
QString placeHelp(const QString &folder, const QString &programFolder,
                  Existing existing = Existing::Replace);
// Puts the vendor and G/L account pickers into the data folder under the suite's names,
// venlookp.exe and gllookup.exe (links to the installed or built programs, found as the runner
// is). Returns a line for each for the summary.
QString placePickers(const QString &folder, const QString &programFolder,
                     Existing existing = Existing::Replace);

// Puts every program of the suite the module starts, with the report definitions, the manual and
// the help text, into a new company's data folder: each of the above in turn. Returns the lines
// for the program's summary.
QString placeSuite(const QString &folder, const QString &programFolder,
                   Existing existing = Existing::Replace);
