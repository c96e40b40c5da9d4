#pragma once

#include <string>
#include <string_view>

class Clock;
class SettingsStore;

/// The time of arrival behind a contact's text. The length in the first line of what these return
/// is provisional. They fail when the first line has no length of 16 bits.
namespace timestamps {

[[nodiscard]] std::string StampPlain(std::string_view message, SettingsStore& settings,
                                     Clock& clock);
/// With the formatting codes of the Messenger Plus add-on: coloured and bold.
[[nodiscard]] std::string StampFormatted(std::string_view message, SettingsStore& settings,
                                         Clock& clock);

}  // namespace timestamps
