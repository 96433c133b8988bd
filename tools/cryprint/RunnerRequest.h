#pragma once

#include <QString>

#include <array>
#include <optional>

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

    // Reads a request; on failure error says which line and why.
    static std::optional<RunnerRequest> parse(const QString &text, QString &error);
};
