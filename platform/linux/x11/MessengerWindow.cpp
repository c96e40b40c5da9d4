#include "platform/linux/x11/MessengerWindow.h"

#include "platform/ForeignWindows.h"

#include <algorithm>
#include <array>

using namespace std::literals;

namespace {

std::string inLowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char each) {
        return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
    });
    return lower;
}

/// A window of Messenger's process opens without a title and gets it a moment later; until then it
/// is not known which one it is.
bool hasMainTitle(const MessengerWindow& window) {
    if (window.written && window.title == window.written) return true;
    const std::string title = window.title.value_or("");
    return !title.empty() && !title.ends_with(" - Conversation");
}

}  // namespace

MessengerWindow::Kind MessengerWindow::kindOf(std::string_view classNames) {
    const std::string names = '\0' + inLowerCase(classNames) + '\0';
    if (names.find("\0msnmsblclass\0"sv) != std::string::npos) return Kind::MainClass;
    if (names.find("\0msnmsgr.exe\0"sv) != std::string::npos) return Kind::OfProcess;
    return Kind::Other;
}

bool MessengerWindow::canBeMain() const {
    if (!isShown) return false;
    if (kind == Kind::MainClass) return true;
    return kind == Kind::OfProcess && !isTransient && !isDialog && hasMainTitle(*this);
}

xcb_window_t mainMessengerWindow(const std::vector<const MessengerWindow*>& windows,
                                 xcb_window_t tracked) {
    using Preference = bool (*)(const MessengerWindow& window, xcb_window_t tracked);
    constexpr std::array<Preference, 5> preferences{
        [](const MessengerWindow& each, xcb_window_t before) { return each.window == before; },
        [](const MessengerWindow& each, xcb_window_t /*before*/) {
            return each.kind == MessengerWindow::Kind::MainClass;
        },
        // An earlier run of this program has taken it for the main window.
        [](const MessengerWindow& each, xcb_window_t /*before*/) {
            return each.written.has_value();
        },
        [](const MessengerWindow& each, xcb_window_t /*before*/) {
            return each.title == ForeignWindows::messengerTitle;
        },
        [](const MessengerWindow& /*each*/, xcb_window_t /*before*/) { return true; },
    };
    for (const Preference preference : preferences) {
        for (const MessengerWindow* const each : windows) {
            if (each->canBeMain() && preference(*each, tracked)) return each->window;
        }
    }
    return 0;
}
