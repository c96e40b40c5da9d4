#include "platform/windows/HiddenWindow.h"

namespace {

constexpr const wchar_t* className = L"CobweaveWindow";

}  // namespace

HiddenWindow::HiddenWindow(Kind kind) {
    const HINSTANCE program = GetModuleHandleW(nullptr);
    WNDCLASSW kindOfWindow{};
    kindOfWindow.lpfnWndProc = procedure;
    kindOfWindow.hInstance = program;
    kindOfWindow.lpszClassName = className;
    // Fails, as it should, for the second window.
    RegisterClassW(&kindOfWindow);
    const auto make = [&](HWND parent) {
        return CreateWindowExW(0, className, L"", WS_POPUP, 0, 0, 0, 0, parent, nullptr, program,
                               nullptr);
    };
    if (kind == Kind::TopLevel) window = make(nullptr);
    if (window == nullptr) window = make(HWND_MESSAGE);
    // Messages that come while the window is being made are not for the object, which is not whole
    // yet.
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

HiddenWindow::~HiddenWindow() {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    DestroyWindow(window);
}

LRESULT CALLBACK HiddenWindow::procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    auto* const self = reinterpret_cast<HiddenWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self == nullptr ? DefWindowProcW(window, message, first, second)
                           : self->onMessage(message, first, second);
}
