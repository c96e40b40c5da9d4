#pragma once

#include <chrono>
#include <string_view>

/// Whether a message bus listens at a socket of the family AF_UNIX and answers by `deadline` as a
/// bus does: it lets this user in and gives the new connection a name. `socketName` begins with a
/// zero byte where the name is an abstract one.
///
/// The D-Bus library waits for a part of that without a limit, and for another 25 s, so it is not
/// let near a bus that does not pass.
[[nodiscard]] bool isAnsweringBus(std::string_view socketName,
                                  std::chrono::steady_clock::time_point deadline);
