#include "platform/OwnWindows.h"

#include "platform/windows/win32.h"

namespace {

class WindowsOwnWindows final : public OwnWindows {
public:
    void setTopMost(WindowHandle window, bool topMost) override {
        const HWND ours = toSystem(window);
        if (!isOurs(ours)) return;
        SetWindowPos(ours, topMost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                     SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
    }

    void setAlpha(WindowHandle window, std::uint8_t alpha) override {
        const HWND ours = toSystem(window);
        if (!isOurs(ours)) return;
        SetWindowLongPtrW(ours, GWL_EXSTYLE, GetWindowLongPtrW(ours, GWL_EXSTYLE) | WS_EX_LAYERED);
        SetLayeredWindowAttributes(ours, 0, alpha, LWA_ALPHA);
    }

    std::optional<ScreenRectangle> workArea() override {
        RECT area{};
        if (SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0) == 0) return std::nullopt;
        return ScreenRectangle{area.left, area.top, area.right, area.bottom};
    }
};

}  // namespace

std::unique_ptr<OwnWindows> makeOwnWindows() { return std::make_unique<WindowsOwnWindows>(); }
