#pragma once

#include "common/ProgramError.h"

// A reason the import stopped, worded for the person who ran it.
class ImportError : public ProgramError {
public:
    explicit ImportError(const QString &message) : ProgramError(message) {}
    QString message() const { return text(); }
};
