#pragma once

#include "common/NumberedError.h"

#include <QString>

// The runner's one error style: whatever stops a report throws a NumberedError whose number is
// the exit code the runner ends with and whose text is the message it prints (and shows, when
// it has a window). The data layer's DbError is one too.
namespace ReportFailure {

constexpr int exitCode = 1;

[[noreturn]] inline void raise(const QString &message)
{
    throw NumberedError(exitCode, message);
}

} // namespace ReportFailure
