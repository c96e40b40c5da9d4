#include "platform/Display.h"

#include "platform/qt/qtPlatform.h"
#include "platform/windows/win32.h"

FoundDisplay findDisplay() {
    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                        GetModuleHandleW(nullptr), nullptr);
    if (window == nullptr) return {"there is no desktop", nullptr};
    DestroyWindow(window);
    return {};
}

std::string qtPlatform(bool withWindows) {
    // The other engine for fonts loses letters at small sizes.
    return withWindows ? "windows:fontengine=directwrite" : "offscreen";
}

QStringList letterFonts() {
    // The Tahoma that comes with Wine has bold letters that are no bolder than the others, and
    // stands too high.
    if (isWine()) return {"Liberation Sans", "Arial", "Tahoma"};
    return {"Tahoma", "Liberation Sans", "Arial"};
}
