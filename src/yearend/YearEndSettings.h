#pragma once

#include <QMap>
#include <QString>

// The data folder's 1099 settings: the file "apmaster-1099.ini" in the data folder. Without the
// file every setting keeps its default and the 1099 print runs behave as they always have.
//
//     [runs]
//     legalthreshold=yes   the print runs use the tax year's legal threshold for the form
//                          instead of the fixed $600 question (default: no)
//     taxyear=2026         the tax year the print runs are for (default: the calendar year
//                          before today's, as the forms are printed in January)
//     [indexed]
//     2027=2100            the 1099-NEC and 1099-MISC threshold of a tax year after 2026, as the
//                          IRS publishes it (whole dollars, a multiple of 100)
//
// Lines starting with ";" or "#" and empty lines are ignored.
struct YearEndSettings {
    bool legalThreshold = false;
    int taxYear = 0; // 0: the year before today's
    QMap<int, double> indexed;
    // Why the file cannot be used ("" when it can): names the line that is wrong.
    QString error;

    static constexpr const char *fileName = "apmaster-1099.ini";

    // The settings of the data folder (the current folder); defaults when it has no such file.
    static YearEndSettings ofDataFolder();
    static YearEndSettings parse(const QString &text);
    // The tax year of a print run made on a day of `todayYear`.
    int runYear(int todayYear) const { return taxYear > 0 ? taxYear : todayYear - 1; }
};
