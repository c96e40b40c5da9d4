#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

/// What the searches are about, each in a file of its own: takes any bytes, as a stranger may send
/// them, and ends the process when something does not hold.
namespace searches {

void filters(std::string_view input);
void frames(std::string_view input);
void movie(std::string_view input);
void settings(std::string_view input);
void socks(std::string_view input);

}  // namespace searches

using Search = void (*)(std::string_view input);

/// The search of that name. Without one the process ends with status 2 and says so.
[[nodiscard]] Search searchOf(std::string_view name);

/// Ends the process when `holds` is false.
inline void demand(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "It does not hold that %s.\n", what);
    std::abort();
}
