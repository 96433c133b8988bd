#pragma once

#include <cstdio>
#include <cstring>

// --help and --version of a benchmark program, answered before anything starts. Returns true
// when one of them was asked for and answered.
inline bool answeredHelpOrVersion(int argc, char *argv[], const char *name, const char *arguments,
                                  const char *what)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--version") == 0 || std::strcmp(argv[i], "-v") == 0) {
            std::printf("%s %s\n", name, APMASTER_VERSION);
            return true;
        }
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            std::printf("Usage: %s %s\n\n%s\n", name, arguments, what);
            return true;
        }
    }
    return false;
}
