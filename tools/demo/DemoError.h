#pragma once

#include "common/ProgramError.h"

namespace Demo {

// Why the demo company could not be written; the text is meant for the person running it.
class Error : public ProgramError {
public:
    explicit Error(const QString &text) : ProgramError(text) {}
};

} // namespace Demo
