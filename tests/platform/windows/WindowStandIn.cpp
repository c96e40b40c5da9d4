#include "tests/platform/shared/WindowStandIn.h"

#include "tests/platform/windows/OtherProgram.h"

struct WindowStandIn::System {
    OtherProgram program;
};

WindowStandIn::WindowStandIn() : system(std::make_unique<System>()) {}

WindowStandIn::~WindowStandIn() = default;

WindowHandle WindowStandIn::openMessenger() {
    return fromSystem(system->program.open("msnmsblclass", "MSN Messenger"));
}

WindowHandle WindowStandIn::openOther(const std::string& title) {
    return fromSystem(system->program.open("Other", title));
}

void WindowStandIn::close(WindowHandle window) {
    system->program.ask("close " + std::to_string(window));
    system->program.announce(EVENT_OBJECT_DESTROY, toSystem(window));
}

void WindowStandIn::activate(WindowHandle window) {
    system->program.ask("activate " + std::to_string(window));
}

std::string WindowStandIn::titleOf(WindowHandle window) const {
    return ::titleOf(toSystem(window));
}

int WindowStandIn::alphaOf(WindowHandle window) const {
    BYTE alpha = 255;
    DWORD parts = 0;
    const BOOL isLayered = GetLayeredWindowAttributes(toSystem(window), nullptr, &alpha, &parts);
    return isLayered != 0 && (parts & LWA_ALPHA) != 0 ? alpha : 255;
}
