#include "platform/windows/EndSignals.h"

#include <atomic>
#include <utility>

namespace {

/// The console's own thread reaches nothing but what the whole process shares.
std::atomic<HWND> receiver{nullptr};

/// The system gives a process about so long before it ends it by force.
constexpr DWORD timeToEnd = 5000;

BOOL WINAPI handleConsoleEvent(DWORD event) {
    PostMessageW(receiver, WM_CLOSE, 0, 0);
    // The process is over when this returns from the other events, and its icon would stay behind.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(timeToEnd);
    return TRUE;
}

}  // namespace

EndSignals::EndSignals(Event<> arrived)
    : HiddenWindow(Kind::TopLevel), arrived(std::move(arrived)) {
    receiver = handle();
    SetConsoleCtrlHandler(handleConsoleEvent, TRUE);
}

EndSignals::~EndSignals() { SetConsoleCtrlHandler(handleConsoleEvent, FALSE); }

LRESULT EndSignals::onMessage(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_CLOSE: arrived(); return 0;
        // Settings and notes are safe at every moment, so the session may end.
        case WM_QUERYENDSESSION: return TRUE;
        case WM_ENDSESSION:
            if (first != 0) arrived();
            return 0;
        default: return ignore(message, first, second);
    }
}
