#include "conversation/messageTools.h"

#include "base/text.h"
#include "platform/Chance.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

using namespace std::string_view_literals;

namespace {

/// Whether `text` begins with `head`, which is in lower case, in any case of letters.
Answer beginsLike(std::optional<std::string_view> text, std::string_view head) {
    if (!text) return Answer::Unknown;
    return beginsInAnyCase(*text, head) ? Answer::Yes : Answer::No;
}

/// The declared length as it is written.
std::optional<std::string_view> lengthWord(std::string_view message) {
    return word(firstLine(message), 3);
}

/// The integer part of the number that `text` is; nothing where it is none, or has more than 32
/// bits.
std::optional<std::int32_t> integerPart(std::string_view text) {
    // Clients and servers write numbers in this form.
    std::int32_t whole = 0;
    const auto [wholeEnd, wholeError] =
        std::from_chars(text.data(), text.data() + text.size(), whole);
    if (wholeError == std::errc() && wholeEnd == text.data() + text.size()) return whole;

    text = trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    const char* const end = text.data() + text.size();
    double value = 0;
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    // Names such as "inf" are no numbers here.
    const bool digits = text.find_first_not_of("+-.0123456789eE") == std::string_view::npos;
    if (error != std::errc() || stop != end || !digits) return std::nullopt;
    value = std::floor(value);
    if (value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(value);
}

/// The text between the first "CO=" of the colour field and the semicolon behind it.
std::optional<std::string_view> oldColor(std::string_view field) {
    constexpr std::string_view mark = "CO=";
    const std::size_t found = field.find(mark);
    if (found == std::string_view::npos) return std::nullopt;
    const std::string_view color = field.substr(found + mark.size());
    return color.substr(0, color.find(';'));
}

}  // namespace

std::optional<std::string_view> messageTools::SecondWord(std::string_view message) {
    return word(firstLine(message), 1);
}

std::optional<std::int32_t> messageTools::PayloadLength(std::string_view message) {
    return integerPart(lengthWord(message).value_or(""));
}

Answer messageTools::IsTextMessage(std::string_view message) {
    return beginsLike(line(message, 2), "content-type: text");
}

Answer messageTools::IsTypingMessage(std::string_view message) {
    return beginsLike(line(message, 3), "typinguser:");
}

std::optional<std::string_view> messageTools::FirstBodyLine(std::string_view message) {
    return line(message, 5);
}

std::optional<std::string_view> messageTools::textAndRest(std::string_view message) {
    return linesFrom(message, 5);
}

std::optional<std::string_view> messageTools::MessageBody(std::string_view message) {
    const auto length = checked<std::size_t>(PayloadLength(message).value_or(-1));
    if (!length) return std::nullopt;
    // The payload's lines count from its own first one, which is line 1 of the chunk.
    return linesFrom(payloadOf(message).substr(0, *length), 4);
}

Answer messageTools::HasTrailingData(std::string_view message) {
    const auto declared = PayloadLength(message);
    if (!declared) return Answer::Unknown;
    const auto rest = std::int64_t(message.size() - firstLine(message).size());
    return rest > std::int64_t{*declared} + 2 ? Answer::Yes : Answer::No;
}

std::string_view messageTools::payloadOf(std::string_view message) {
    return linesFrom(message, 1).value_or(message);
}

std::optional<std::string> messageTools::FixPayloadLength(std::string message) {
    const auto declared = PayloadLength(message);
    if (!declared) return std::nullopt;
    const std::size_t length = payloadOf(message).size();
    return replaceFirst(std::move(message), std::to_string(*declared), std::to_string(length));
}

std::optional<std::string> messageTools::withLengthChanged(std::string_view message,
                                                           std::int64_t change) {
    const auto declared = PayloadLength(message);
    if (!declared || !checked<std::int16_t>(*declared)) return std::nullopt;
    const auto changed = checked<std::int16_t>(*declared + change);
    if (!changed) return std::nullopt;
    return replaceFirst(std::string(message), std::to_string(*declared), std::to_string(*changed));
}

std::string messageTools::colorCode(float drawn) {
    constexpr double white = 16777215.0;
    const auto color = static_cast<unsigned>(std::lrint(static_cast<double>(drawn) * white));
    char digits[8];
    const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), color, 16);
    return {std::begin(digits), end};
}

std::optional<std::string> messageTools::ApplyRandomColor(std::string_view message,
                                                          Chance& chance) {
    const std::string color = colorCode(chance.draw());
    const auto field = word(line(message, 3).value_or(""), 3);
    const auto old = oldColor(field.value_or(""));
    const auto declared = PayloadLength(message);
    if (!old || !declared) return std::nullopt;
    const auto delta =
        checked<std::int16_t>(std::int64_t(color.size()) - std::int64_t(old->size()));
    if (!delta) return std::nullopt;
    const auto length = checked<std::int32_t>(std::int64_t{*declared} + *delta);
    if (!length) return std::nullopt;
    std::string colored = replaceFirst(std::string(message), *field, "CO=" + color + ";");
    return replaceFirst(std::move(colored), *lengthWord(message), std::to_string(*length));
}
