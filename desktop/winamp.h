#pragma once

#include <string>
#include <string_view>

class MediaPlayer;

/// The song in the player's title, and the player's five transport commands.
namespace winamp {

/// The text between the track number and " - Winamp" in the player's title: exact for a track
/// number of one or two digits, and for others what the same positions give. A title without that
/// name is the song.
[[nodiscard]] std::string songInTitle(std::string title);

/// The song that the player shows now; empty without a player.
[[nodiscard]] std::string CurrentSong(MediaPlayer& player);

/// The command number that the end of `message` asks for ("prev", "play", "pause", "stop", "next");
/// 0 when it asks for none. Blanks around the message do not count.
[[nodiscard]] int transportCommand(std::string_view message);

}  // namespace winamp
