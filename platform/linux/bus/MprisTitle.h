#pragma once

#include <QVariant>

#include <string>
#include <string_view>

/// How far a player has got with its song.
enum class MprisStatus { Stopped, Paused, Playing };

/// What the property `Metadata` tells of the song, as "Artist - Title", or "Title" without an
/// artist; several artists are joined by ", ". Empty without a title, and where the property or its
/// title is of a wrong type. UTF-8 without control characters, and short enough for `mprisTitle`.
[[nodiscard]] std::string mprisSong(const QVariant& metadata);

/// The title of the player's window, as in "1. Artist - Title - Winamp [Paused]": at most 2048
/// bytes. Empty for an empty song.
[[nodiscard]] std::string mprisTitle(std::string_view song, MprisStatus status);
