#pragma once

#include <QString>

#include <array>

// A report request as the modules hand it over: the marker line "Crystal~", then one
// "Key=value~" line per key, lines separated by single line feeds.
struct RunnerRequest {
    QString reportFileName;
    QString windowTitle;
    int marginTop = 0;  // twips
    int marginLeft = 0; // twips
    QString selectionFormula;
    std::array<QString, 6> dataFiles;
    std::array<QString, 4> sortFields;
    QString destination;
    QString printFileName;
    QString printFileType;

    // "File" in any case: written without a window.
    bool toFile() const;

    // Reads a request; a NumberedError (ReportFailure) says which line and why.
    static RunnerRequest parse(const QString &text);

private:
    // One "Key=value" line, its key not seen before.
    void take(const QString &key, const QString &value, int lineNumber);
    // The keys together: a report named, a destination and its file type that fit.
    void checkWhole() const;
};
