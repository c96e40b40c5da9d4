#include "platform/Display.h"

#include "platform/qt/qtPlatform.h"

#include <cstdlib>

#include <xcb/xcb.h>

namespace {

std::string valueOf(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? "" : value;
}

std::string whyNoDisplay() {
    if (const std::string display = valueOf("DISPLAY"); !display.empty()) {
        return "the display " + display + " does not answer";
    }
    if (!valueOf("WAYLAND_DISPLAY").empty()) return "Wayland is there without XWayland";
    return "there is no display";
}

}  // namespace

FoundDisplay findDisplay() {
    const std::shared_ptr<xcb_connection_t> connection(xcb_connect(nullptr, nullptr),
                                                       &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0) return {whyNoDisplay(), nullptr};
    return {std::nullopt, connection};
}

std::string qtPlatform(bool withWindows) { return withWindows ? "xcb" : "offscreen"; }

QStringList letterFonts() { return {"Liberation Sans"}; }
