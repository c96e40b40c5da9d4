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

QStringList letterFonts() { return {"Tahoma", "Liberation Sans", "Arial"}; }
