#include "conversation/timestamps.h"

#include "conversation/injection.h"
#include "conversation/messageTools.h"
#include "platform/Clock.h"
#include "stores/options.h"

#include <cstdint>

namespace {

/// Stands before a colour's number in a text, for those who have the Messenger Plus add-on.
constexpr char colorMark = '\x03';

/// What surrounds the time: the first characters of the two options.
struct Brackets {
    std::string prefix;
    std::string postfix;

    explicit Brackets(SettingsStore& settings)
        : prefix(textOf(settings, options::tsprefix).substr(0, 1)),
          postfix(textOf(settings, options::tspostfix).substr(0, 1)) {}
};

/// `message` with its length made longer by the time and `others` characters. The text asks the
/// clock again: where that time is a character longer, the caller, who measures the message,
/// corrects the length.
std::optional<std::string> lengthened(std::string_view message, std::int64_t others, Clock& clock) {
    return messageTools::withLengthChanged(message, std::int64_t(clock.timeText().size()) + others);
}

std::string colorNumber(SettingsStore& settings) {
    std::string color = textOf(settings, options::tscolor);
    if (color == options::black) return "1";
    if (color == options::red) return "4";
    return color;
}

}  // namespace

std::optional<std::string> timestamps::StampPlain(std::string_view message, SettingsStore& settings,
                                                  Clock& clock) {
    const Brackets brackets(settings);
    // A blank and the two brackets. Where one is missing, the caller, who measures the message,
    // corrects it.
    const auto stamped = lengthened(message, 3, clock);
    if (!stamped) return std::nullopt;
    return *stamped + " " + brackets.prefix + clock.timeText() + brackets.postfix;
}

std::optional<std::string> timestamps::StampFormatted(std::string_view message,
                                                      SettingsStore& settings, Clock& clock) {
    const std::string color = colorNumber(settings);
    Brackets brackets(settings);
    if (brackets.prefix.empty() || brackets.postfix.empty()) {
        brackets.prefix = options::usualPrefix;
        brackets.postfix = options::usualPostfix;
    }
    // Two colour marks, a colour of one character, the code of bold, a blank and the two brackets.
    const auto stamped = lengthened(message, 7, clock);
    if (!stamped) return std::nullopt;
    return *stamped + colorMark + colorMark + color + injection::boldCode + " " + brackets.prefix +
           clock.timeText() + brackets.postfix;
}
