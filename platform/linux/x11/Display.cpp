#include "platform/Display.h"
#include "platform/qt/qtPlatform.h"

#include <cstdlib>

#include <xcb/xcb.h>

namespace {

std::string valueOf(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? "" : value;
}

bool displayAnswers() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

std::string whyNoDisplay() {
    if (const std::string display = valueOf("DISPLAY"); !display.empty()) {
        return "the display " + display + " does not answer";
    }
    if (!valueOf("WAYLAND_DISPLAY").empty()) return "Wayland is there without XWayland";
    return "there is no display";
}

}  // namespace

std::optional<std::string> whyWithoutWindows() {
    if (displayAnswers()) return std::nullopt;
    return whyNoDisplay();
}

std::string qtPlatform(bool withWindows) { return withWindows ? "xcb" : "offscreen"; }
