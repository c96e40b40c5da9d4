#pragma once

#include <string_view>

/// Lines for whoever started the program, on its standard output and its standard error.
///
/// No line blocks or ends the program: one that cannot be written at once, because nobody reads
/// what was written before, because the disk is full or because the terminal is gone, is lost.
/// Control characters, and bytes that are no UTF-8, are shown as in "\x1B", for lines hold what
/// comes from outside: paths, names of displays, messages of libraries. A line ends at 4,000 bytes.
namespace console {

/// Call it first of all. From then on the libraries in the process do not block on standard output
/// and error either, as far as the system allows it.
void prepare();

/// Writes `line`, which is UTF-8 without a line end, to standard output.
void output(std::string_view line);
/// Writes `line`, which is UTF-8 without a line end, to standard error.
void error(std::string_view line);

}  // namespace console
