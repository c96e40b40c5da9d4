#include "platform/windows/WindowOfClass.h"

#include "platform/shared/runEvent.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

/// The system's events of windows, for all that wait for them. They are there as long as somebody
/// does.
class WindowEvents {
public:
    static void add(WindowOfClass& listener) {
        if (listeners.empty()) {
            hooks = {begin(EVENT_OBJECT_CREATE, EVENT_OBJECT_SHOW),
                     begin(EVENT_OBJECT_NAMECHANGE, EVENT_OBJECT_NAMECHANGE)};
        }
        listeners.push_back(&listener);
    }
    static void remove(WindowOfClass& listener) {
        std::erase(listeners, &listener);
        if (!listeners.empty()) return;
        for (HWINEVENTHOOK& hook : hooks)
            UnhookWinEvent(std::exchange(hook, nullptr));
    }

private:
    static HWINEVENTHOOK begin(DWORD first, DWORD last) {
        return SetWinEventHook(first, last, nullptr, onEvent, 0, 0,
                               WINEVENT_OUTOFCONTEXT | WINEVENT_SKIPOWNPROCESS);
    }
    static void CALLBACK onEvent(HWINEVENTHOOK /*hook*/, DWORD event, HWND window, LONG object,
                                 LONG child, DWORD /*thread*/, DWORD /*time*/) {
        if (object != OBJID_WINDOW || child != CHILDID_SELF) return;
        // A listener may end in the event.
        const std::vector<WindowOfClass*> all = listeners;
        for (WindowOfClass* const each : all) {
            if (std::ranges::find(listeners, each) == listeners.end()) continue;
            runEvent([&] { each->onEvent(event, window); });
        }
    }

    static inline std::vector<WindowOfClass*> listeners;
    static inline std::array<HWINEVENTHOOK, 2> hooks{};
};

WindowOfClass::WindowOfClass(std::wstring className) : className(std::move(className)) {
    WindowEvents::add(*this);
}

WindowOfClass::~WindowOfClass() { WindowEvents::remove(*this); }

HWND WindowOfClass::handle() {
    if (known != nullptr && IsWindow(known) != 0) return known;
    const bool isLost = known != nullptr;
    if (isLost) lost = std::exchange(known, nullptr);
    if (isLost || std::exchange(mayHaveCome, false)) {
        known = FindWindowW(className.c_str(), nullptr);
        mayHaveCome = false;
    }
    return known;
}

void WindowOfClass::onEvent(DWORD event, HWND subject) {
    if (event == EVENT_OBJECT_DESTROY) {
        // Its owner may have found out before.
        if (subject == known || subject == lost) changed();
        return;
    }
    std::array<wchar_t, 256> name{};
    const int size = GetClassNameW(subject, name.data(), static_cast<int>(name.size()));
    if (std::wstring_view(name.data(), static_cast<std::size_t>(size)) != className) return;
    mayHaveCome = true;
    changed();
}
