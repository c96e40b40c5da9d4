#include "conversation/messageTools.h"

#include "base/Failure.h"
#include "base/text.h"
#include "platform/Chance.h"

#include <charconv>
#include <cmath>
#include <limits>

using namespace std::string_view_literals;

namespace {

constexpr std::string_view lineEnd = "\r\n";

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Whether `text` begins with `head`, which is in lower case, in any case of letters.
bool beginsLike(std::string_view text, std::string_view head) {
    return lowerCase(text.substr(0, head.size())) == head;
}

/// Word 3 of line 0: the declared length as it is written.
std::string_view lengthWord(std::string_view message) { return word(line(message, 0), 3); }

/// What stands between the first "CO=" of the colour field and the semicolon behind it.
std::string_view oldColor(std::string_view field) {
    constexpr std::string_view mark = "CO=";
    const std::size_t found = field.find(mark);
    if (found == std::string_view::npos) throw Failure("no colour field");
    const std::string_view color = field.substr(found + mark.size());
    return color.substr(0, color.find(';'));
}

}  // namespace

std::int32_t messageTools::integerPart(std::string_view text) {
    text = withoutBlanks(text);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    const char* const end = text.data() + text.size();
    double value = 0;
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    // Names such as "inf" are no numbers here.
    const bool digits = text.find_first_not_of("+-.0123456789eE") == std::string_view::npos;
    if (error != std::errc() || stop != end || !digits) throw Failure("not a number");
    value = std::floor(value);
    if (value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max()) {
        throw Failure("number out of range");
    }
    return static_cast<std::int32_t>(value);
}

std::string messageTools::payloadOf(std::string_view message) {
    const std::string head = std::string(line(message, 0)) + std::string(lineEnd);
    return replaceFirst(std::string(message), head, "");
}

std::string messageTools::SecondWord(std::string_view message) {
    return std::string(word(line(message, 0), 1));
}

std::int32_t messageTools::PayloadLength(std::string_view message) {
    return integerPart(lengthWord(message));
}

bool messageTools::IsTextMessage(std::string_view message) {
    return beginsLike(line(message, 2), "content-type: text");
}

bool messageTools::IsTypingMessage(std::string_view message) {
    return beginsLike(line(message, 3), "typinguser:");
}

std::string_view messageTools::FirstBodyLine(std::string_view message) { return line(message, 5); }

std::string messageTools::linesAboveFour(std::string_view text) {
    // The pieces with a CRLF behind each and the last CRLF taken off are what stands behind the
    // fifth CRLF.
    for (int index = 0; index < 5; ++index) {
        const std::size_t end = text.find(lineEnd);
        if (end == std::string_view::npos) throw Failure("no text to take the last line end off");
        text.remove_prefix(end + lineEnd.size());
    }
    return std::string(text);
}

std::string messageTools::MessageBody(std::string_view message) {
    const std::int32_t length = PayloadLength(message);
    if (length < 0) throw Failure("a negative length");
    const std::string payload = payloadOf(message).substr(0, static_cast<std::size_t>(length));
    // The payload's lines count from its own first one, which is line 1 of the chunk.
    return linesAboveFour(std::string(lineEnd) + payload);
}

bool messageTools::HasTrailingData(std::string_view message) {
    const std::size_t rest = message.size() - line(message, 0).size();
    return static_cast<std::int64_t>(rest) > std::int64_t{PayloadLength(message)} + 2;
}

std::string messageTools::FixPayloadLength(std::string_view message) {
    const std::string declared = std::to_string(PayloadLength(message));
    const std::string actual = std::to_string(payloadOf(message).size());
    return replaceFirst(std::string(message), declared, actual);
}

std::string messageTools::colorCode(float drawn) {
    constexpr double white = 16777215.0;
    const auto color = static_cast<unsigned>(std::lrint(static_cast<double>(drawn) * white));
    char digits[8];
    const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), color, 16);
    return {std::begin(digits), end};
}

std::string messageTools::ApplyRandomColor(std::string_view message, Chance& chance) {
    const std::string color = colorCode(chance.draw());
    const std::string field(word(line(message, 3), 3));
    const auto delta =
        checked<std::int16_t>(std::int64_t(color.size()) - std::int64_t(oldColor(field).size()));
    std::string colored = replaceFirst(std::string(message), field, "CO=" + color + ";");
    const std::string_view declared = lengthWord(message);
    const auto length = checked<std::int32_t>(std::int64_t{integerPart(declared)} + delta);
    return replaceFirst(std::move(colored), declared, std::to_string(length));
}
