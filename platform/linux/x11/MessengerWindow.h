#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>

/// What is known of a window that may be Messenger's main window, and how it is told from others.
struct MessengerWindow {
    enum class Kind {
        Other,
        /// Of the class that Messenger's main window has had from the start.
        MainClass,
        /// Of Messenger's process under Wine, which names all windows of a program alike: main
        /// window, conversations, dialogs.
        OfProcess,
    };
    /// From what stands in WM_CLASS: two names, each with a zero byte behind it.
    [[nodiscard]] static Kind kindOf(std::string_view classNames);

    xcb_window_t window = 0;
    Kind kind = Kind::Other;
    std::optional<std::string> title = std::nullopt;
    /// What this program has written as the title last, in this run or an earlier one.
    std::optional<std::string> written = std::nullopt;
    bool isTransient = false;
    bool isDialog = false;
    bool isShown = false;

    [[nodiscard]] bool canBeMain() const;
};

/// Which of them is the main window, in the order in which they opened; 0 when none is. The
/// `tracked` one stays it for as long as it can be it.
[[nodiscard]] xcb_window_t mainMessengerWindow(const std::vector<const MessengerWindow*>& windows,
                                               xcb_window_t tracked);
