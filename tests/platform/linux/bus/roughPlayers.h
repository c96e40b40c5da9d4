#pragma once

#include <string_view>

/// Players that a test needs as processes of their own, on the bus of the environment. They write a
/// line when they are there.
namespace roughPlayers {

/// Is on the bus and does not read what it is sent.
constexpr const char* silent = "--silent-player";
/// Plays, with the title "Frozen". When it has said so to who asked, it writes another line and
/// does nothing any more.
constexpr const char* frozen = "--frozen-player";
/// Plays, and tells of another title without an end.
constexpr const char* flooding = "--flooding-player";

/// Becomes a player of this manner; false for another word.
[[nodiscard]] bool run(std::string_view manner);

}  // namespace roughPlayers
