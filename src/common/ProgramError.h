#pragma once

#include "common/NumberedError.h"

// Why one of the suite's programs stops, worded for the person who ran it; its number is the exit
// code the program ends with. The programs throw it (or a type of their own derived from it) and
// catch it in main, which writes the text to standard error and returns the code; in a window the
// handler guard reports it as it reports any numbered error. An error of the data layer that
// reaches main ends the program with `failed` as well.
class ProgramError : public NumberedError {
public:
    // The program could not do its work.
    static constexpr int failed = 1;

    explicit ProgramError(const QString &text, int exitCode = failed) :
        NumberedError(exitCode, text)
    {
    }
    int exitCode() const { return code(); }

    // The exit code for an error that reached a program's main: a program error's own, else
    // `failed`.
    static int exitCodeOf(const NumberedError &error)
    {
        const auto *own = dynamic_cast<const ProgramError *>(&error);
        return own ? own->exitCode() : failed;
    }
};
