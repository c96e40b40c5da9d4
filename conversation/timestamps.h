#pragma once

#include <optional>
#include <string>
#include <string_view>

class Clock;
class SettingsStore;

/// The time of arrival behind a contact's text. The length in the first line of what these return
/// is provisional. They return nothing when that length, before or after, is no number of 16 bits.
namespace timestamps {

/// The time as plain text.
[[nodiscard]] std::optional<std::string> StampPlain(std::string_view message,
                                                    SettingsStore& settings, Clock& clock);
/// The time with the formatting codes of the Messenger Plus add-on: coloured and bold.
[[nodiscard]] std::optional<std::string> StampFormatted(std::string_view message,
                                                        SettingsStore& settings, Clock& clock);

}  // namespace timestamps
