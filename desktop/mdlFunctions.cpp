#include "desktop/mdlFunctions.h"

#include "base/Failure.h"
#include "base/text.h"
#include "platform/Browser.h"
#include "platform/MachineFacts.h"
#include "platform/Registry.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

using namespace std::string_view_literals;

namespace {

/// What memory sizes are divided by: a little less than the 1048576 of the unit, so that 536870912
/// bytes are shown as "514.2 Mb".
constexpr double bytesPerMb = 1044032.0;

/// Memory in tenths of a Mb, rounded half up. Sizes are counts of 32 bits with a sign, and a
/// larger memory reports the largest of them.
int tenthsOfMb(std::uint64_t bytes) {
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    const double mb = static_cast<double>(std::min(bytes, most)) / bytesPerMb;
    return static_cast<int>(std::floor(mb * 10.0 + 0.5));
}

std::string mbText(std::uint64_t bytes) {
    const int tenths = tenthsOfMb(bytes);
    std::string text = std::to_string(tenths / 10);
    if (tenths % 10 != 0) text += "." + std::to_string(tenths % 10);
    return text + " Mb";
}

/// The nearest whole number, ties to the even one.
long roundedToEven(double value) { return std::lrint(value); }

/// Text positions are 16-bit.
bool isTooLong(std::string_view text) { return !checked<std::int16_t>(text.size()); }

/// The value of the hexadecimal digits that `text` starts with; 0 without any.
unsigned leadingHexadecimal(std::string_view text) {
    unsigned value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return value;
}

/// The character of the code that `item` spells; nothing where it spells none.
std::optional<char> characterOf(std::string_view item) {
    const bool hexadecimal = item.starts_with('H');
    const std::string_view digits = item.substr(hexadecimal ? 1 : 0);
    std::uint8_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, hexadecimal ? 16 : 10);
    if (error != std::errc() || stop != end) return std::nullopt;
    return static_cast<char>(value);
}

void searchAt(std::string_view address, std::string& text, Browser& browser) {
    text = replaceAll(text, " ", "%20");
    browser.open(std::string(address) + text);
}

}  // namespace

std::string mdlFunctions::AvailableRam(MachineFacts& machine) {
    return mbText(machine.memory().available);
}

std::string mdlFunctions::TotalRam(MachineFacts& machine) { return mbText(machine.memory().total); }

std::optional<std::string> mdlFunctions::RamRatio(MachineFacts& machine) {
    const MemoryStatus memory = machine.memory();
    const long total = roundedToEven(tenthsOfMb(memory.total) / 10.0);
    const long available = roundedToEven(tenthsOfMb(memory.available) / 10.0);
    if (available == 0) return std::nullopt;
    const double quotient = static_cast<double>(total) / static_cast<double>(available);
    return std::to_string(roundedToEven(quotient)) + "%";
}

std::string mdlFunctions::UptimeText(MachineFacts& machine) {
    // The tick count has 32 bits and a sign, so it turns negative after 24.8 days.
    const auto ticks = static_cast<std::int32_t>(
        static_cast<std::uint32_t>(static_cast<std::uint64_t>(machine.uptime().count())));
    int seconds = ticks / 1000;
    const int days = seconds / 86400;
    if (days > 0) seconds -= days * 86400;
    const int hours = seconds / 3600;
    if (hours > 0) seconds -= hours * 3600;
    return std::to_string(days) + " days, " + std::to_string(hours) + " hours, " +
           std::to_string(seconds / 60) + " minutes and " + std::to_string(seconds % 60) +
           " seconds.";
}

std::optional<std::string> mdlFunctions::UrlEncode(std::string_view text) {
    if (isTooLong(text)) return std::nullopt;
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    encoded.reserve(text.size() * 3);
    for (const char character : text) {
        const auto value = static_cast<std::uint8_t>(character);
        encoded += '%';
        if (value >= 16) encoded += digits[value / 16];
        encoded += digits[value % 16];
    }
    return encoded;
}

std::optional<std::string> mdlFunctions::UrlDecode(std::string_view text) {
    if (isTooLong(text)) return std::nullopt;
    std::string decoded;
    decoded.reserve(text.size());
    while (!text.empty()) {
        const bool coded = text.front() == '%';
        decoded += coded ? static_cast<char>(leadingHexadecimal(text.substr(1, 2))) : text.front();
        text.remove_prefix(coded ? std::min<std::size_t>(3, text.size()) : 1);
    }
    return decoded;
}

std::optional<std::int16_t> mdlFunctions::Base256ToInteger(std::string_view text) {
    if (text.size() < 3) return std::int16_t{0};
    int value = 0;
    for (const char digit : text.substr(0, 3))
        value = value * 256 + static_cast<std::uint8_t>(digit);
    return checked<std::int16_t>(value);
}

std::optional<std::string> mdlFunctions::CodesToText(std::string_view list, const Event<>& turn) {
    std::string text;
    for (std::size_t index = 0; const auto item = word(list, index); ++index) {
        const auto character = characterOf(*item);
        if (!character) return std::nullopt;
        text += *character;
        turn();
    }
    return text;
}

void mdlFunctions::SetTopMost(std::string_view state, WindowHandle form, OwnWindows& windows) {
    if (state == "Enabled"sv) windows.setTopMost(form, true);
    if (state == "Disabled"sv) windows.setTopMost(form, false);
}

void mdlFunctions::SetWindowOpacity(WindowHandle window, std::int16_t& percentage,
                                    OwnWindows& windows) {
    percentage = checked<std::int16_t>(static_cast<int>(percentage * 2.55)).value_or(percentage);
    if (const auto alpha = checked<std::uint8_t>(percentage)) windows.setAlpha(window, *alpha);
}

bool mdlFunctions::isStatusName(std::string_view text) {
    return std::ranges::find(statuses, text, &Status::name) != statuses.end();
}

std::string_view mdlFunctions::StatusCodeFromName(std::string_view name) {
    const auto* const found = std::ranges::find(statuses, name, &Status::name);
    return found == statuses.end() ? "NLN"sv : found->code;
}

void mdlFunctions::SearchGoogle(std::string& text, Browser& browser) {
    searchAt("http://www.google.com/search?q=", text, browser);
}

void mdlFunctions::SearchDictionary(std::string& text, Browser& browser) {
    searchAt("http://www.dictionary.com/search?q=", text, browser);
}

void mdlFunctions::SearchThesaurus(std::string& text, Browser& browser) {
    searchAt("http://www.thesaurus.com/search?q=", text, browser);
}

void mdlFunctions::SearchAcronym(std::string& text, Browser& browser) {
    searchAt("http://www.acronymfinder.com/af-query.asp?String=exact&Acronym=", text, browser);
}

bool mdlFunctions::MessengerPlusPresent(Registry& registry) {
    return registry.currentUserHasKey("Software\\Patchou\\MsgPlus2"sv);
}
