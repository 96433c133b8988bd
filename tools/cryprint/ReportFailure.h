#pragma once

#include "common/ProgramError.h"

#include <QString>

// The runner's one error style, the suite programs' own: whatever stops a report throws a
// ProgramError whose number is the exit code the runner ends with and whose text is the message
// it prints (and shows, when it has a window). The data layer's DbError is caught beside it.
namespace ReportFailure {

constexpr int exitCode = ProgramError::failed;

[[noreturn]] inline void raise(const QString &message)
{
    throw ProgramError(message, exitCode);
}

} // namespace ReportFailure
