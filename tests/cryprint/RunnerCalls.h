#pragma once

#include "ReportDefinition.h"
#include "ReportQuery.h"
#include "RunnerRequest.h"

#include "common/NumberedError.h"

#include <QString>

#include <optional>

// The runner's calls throw a NumberedError; these give its message instead, for the checks
// that compare messages (an exception of any other type still ends the test).
template <typename Call> QString failureOf(Call &&call)
{
    try {
        call();
    } catch (const NumberedError &e) {
        return e.text();
    }
    return {};
}

inline std::optional<ReportDefinition> loadDefinition(const QString &path, QString &error)
{
    std::optional<ReportDefinition> def;
    error = failureOf([&] { def = ReportDefinition::load(path); });
    return def;
}

inline bool openRows(ReportQuery &rows, const ReportDefinition &def, const RunnerRequest &request,
                     QString &error)
{
    error = failureOf([&] { rows.open(def, request); });
    return error.isEmpty();
}
