#include "platform/Display.h"

#include <cstdlib>

#include <xcb/xcb.h>

namespace {

bool isSet(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

bool displayAnswers() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

void choosePlatform(const char* name) {
    constexpr int keep = 0;
    setenv("QT_QPA_PLATFORM", name, keep);
}

}  // namespace

std::optional<std::string> chooseDisplay() {
    if (displayAnswers()) {
        choosePlatform("xcb");
        return std::nullopt;
    }
    choosePlatform("offscreen");
    if (isSet("DISPLAY")) {
        return "the display " + std::string(std::getenv("DISPLAY")) + " does not answer";
    }
    if (isSet("WAYLAND_DISPLAY")) return "Wayland is there without XWayland (no DISPLAY)";
    return "there is no display";
}
