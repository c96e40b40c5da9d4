#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

/// What one search is about, each in a file of its own: takes any bytes, as a stranger may send
/// them, and ends the process when something does not hold.
void fuzz(std::string_view input);

/// Prepares the process for that, once.
void prepareFuzz(int& argc, char** argv);

/// Ends the process when `holds` is false.
inline void demand(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "It does not hold that %s.\n", what);
    std::abort();
}
