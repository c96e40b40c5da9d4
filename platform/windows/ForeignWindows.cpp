#include "platform/ForeignWindows.h"

#include "platform/windows/WindowOfClass.h"
#include "platform/windows/wideText.h"

namespace {

class WindowsForeignWindows final : public ForeignWindows {
public:
    WindowsForeignWindows() {
        messenger.changed = [this] { changed(); };
    }

    WindowHandle MessengerWindowHandle() override { return fromSystem(messenger.handle()); }

    void SetWindowText(WindowHandle window, std::string_view text) override {
        // A window that does not answer holds up nothing for longer.
        constexpr UINT longestWait = 50;
        const std::wstring wide = wideText::fromBytes(text);
        SendMessageTimeoutW(toSystem(window), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str()),
                            SMTO_BLOCK | SMTO_ABORTIFHUNG, longestWait, nullptr);
    }

    void requestMessengerEnd() override {
        // Messenger takes the message with its hidden window, which it has without any other too.
        // The address of a number stands for the request to sign out.
        static const short zero = 0;
        const HWND hidden = FindWindowW(L"MSNHiddenWindowClass", nullptr);
        const UINT shutDown = RegisterWindowMessageW(L"TryMsnMsgrShutdown");
        if (hidden == nullptr) return;
        SendNotifyMessageW(hidden, shutDown, 1, reinterpret_cast<LPARAM>(&zero));
    }

    WindowHandle foreground() override { return fromSystem(GetForegroundWindow()); }

    void giveFocusBack(WindowHandle window) override {
        const HWND now = GetForegroundWindow();
        if (now == toSystem(window) || (now != nullptr && !isOurs(now))) return;
        SetForegroundWindow(toSystem(window));
    }

private:
    WindowOfClass messenger{L"msnmsblclass"};
};

}  // namespace

std::unique_ptr<ForeignWindows> makeForeignWindows() {
    return std::make_unique<WindowsForeignWindows>();
}
