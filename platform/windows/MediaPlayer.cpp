#include "platform/MediaPlayer.h"

#include "platform/shared/runEvent.h"
#include "platform/windows/HiddenWindow.h"
#include "platform/windows/MediaSession.h"
#include "platform/windows/WindowOfClass.h"
#include "platform/windows/wideText.h"

#include <array>
#include <utility>

namespace {

/// What the system knows of a title: the window's program, which may hang, is not asked.
std::string titleOf(HWND window) {
    std::array<wchar_t, 2048> title{};
    const int size = InternalGetWindowText(window, title.data(), static_cast<int>(title.size()));
    return wideText::toUtf8({title.data(), static_cast<std::size_t>(size)});
}

/// Looks at the title of a window each second, as long as there is one, where the system does not
/// tell that it changes or goes.
class TitleWatch final : private HiddenWindow {
public:
    TitleWatch() : HiddenWindow(Kind::MessagesOnly) {}

    Event<> changed;

    /// Watches a window from now on, until it is gone.
    void watch(HWND window) {
        if (!isNeeded || window == nullptr || window == watched) return;
        watched = window;
        title = titleOf(window);
        constexpr UINT interval = 1000;
        SetTimer(handle(), timer, interval, nullptr);
    }

private:
    static constexpr UINT_PTR timer = 1;

    [[nodiscard]] LRESULT onMessage(UINT message, WPARAM first, LPARAM second) override {
        if (message != WM_TIMER) return ignore(message, first, second);
        if (IsWindow(watched) == 0) {
            KillTimer(handle(), timer);
            watched = nullptr;
        }
        const std::string now = titleOf(watched);
        if (std::exchange(title, now) != now) runEvent([this] { changed(); });
        return 0;
    }

    /// Wine 8 reports only that windows of others come, and Windows all that happens to them.
    const bool isNeeded = isWine();
    HWND watched = nullptr;
    std::string title;
};

/// Winamp, and players that show themselves as it does, by their window alone; while there is none,
/// the system's media session.
class WindowsPlayer final : public MediaPlayer {
public:
    WindowsPlayer() {
        winamp.changed = [this] {
            titles.watch(winamp.handle());
            changed();
        };
        titles.watch(winamp.handle());
        titles.changed = [this] { changed(); };
        session.changed = [this] { changed(); };
    }

    [[nodiscard]] Window WinampWindow() override {
        const HWND window = winamp.handle();
        return window != nullptr ? fromSystem(window) : session.window();
    }

    [[nodiscard]] std::string WindowTextOf(Window window) override {
        return isSession(window) ? session.titleOf(window) : titleOf(toSystem(window));
    }

    void command(Window window, int number) override {
        if (isSession(window)) {
            session.command(window, number);
        } else if (window != 0) {
            PostMessageW(toSystem(window), WM_COMMAND, static_cast<WPARAM>(number), 0);
        }
    }

private:
    /// The system's windows have higher numbers than there will be sessions.
    [[nodiscard]] static bool isSession(Window window) { return window > 0 && window < 0x10000; }

    WindowOfClass winamp{L"Winamp v1.x"};
    TitleWatch titles;
    MediaSession session;
};

}  // namespace

std::unique_ptr<MediaPlayer> makeMediaPlayer() { return std::make_unique<WindowsPlayer>(); }
