#pragma once

#include <QString>

#include <array>

// The pending report request the report commands fill and the report runner hands over: one
// report definition, its selection and sort, as the suite's report runner reads them.
struct ReportRequest {
    QString reportFileName; // "rap001.rpt", relative to the data folder
    QString windowTitle;    // the runner's preview caption; the vendor commands leave it empty
    QString selectionFormula;
    // Database paths for the report's tables in table order; the vendor commands leave them
    // empty. The sixth is the user-defined fields' temporary report record.
    std::array<QString, 6> dataFiles;
    std::array<QString, 4> sortFields; // "+{vendors.vendnumber}"
    // Output settings other callers may give; the vendor screen never does (preview applies).
    QString destination;
    QString printFileName;
    QString printFileType;
    qint64 reportTaskId = 0; // the runner's process id, kept; 0 when it was not started

    // The request as the runner reads it from the clipboard: "Crystal~", then one "Key=value~"
    // line per key in a fixed order, single line feeds between lines and none after the last.
    QString text(int marginTop, int marginLeft) const;
    // Empties what one request fills; the report file name stays.
    void clear();
};
