#include "tests/platform/shared/WindowStandIn.h"

#include "tests/support/linux/StandIn.h"

/// Programs on the X server of the environment, without a window manager.
struct WindowStandIn::System {
    StandIn programs;

    [[nodiscard]] static xcb_window_t numberOf(WindowHandle window) {
        return static_cast<xcb_window_t>(window);
    }
};

WindowStandIn::WindowStandIn() : system(std::make_unique<System>()) {}

WindowStandIn::~WindowStandIn() = default;

WindowHandle WindowStandIn::openMessenger() {
    return system->programs.open({"msnmsblclass", "Msnmsblclass", "MSN Messenger"});
}

WindowHandle WindowStandIn::openOther(const std::string& title) {
    return system->programs.open({"xterm", "XTerm", title});
}

void WindowStandIn::close(WindowHandle window) { system->programs.close(System::numberOf(window)); }

void WindowStandIn::activate(WindowHandle window) {
    system->programs.focus(System::numberOf(window));
}

std::string WindowStandIn::titleOf(WindowHandle window) const {
    return system->programs.bytes(System::numberOf(window), "_NET_WM_NAME").value_or("");
}

int WindowStandIn::alphaOf(WindowHandle window) const {
    constexpr std::uint32_t solid = 255;
    constexpr unsigned upperBits = 24;
    const auto opacity =
        system->programs.numbers(System::numberOf(window), "_NET_WM_WINDOW_OPACITY");
    return static_cast<int>(opacity.empty() ? solid : opacity.front() >> upperBits);
}
