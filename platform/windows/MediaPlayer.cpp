#include "platform/MediaPlayer.h"

#include "platform/windows/WindowOfClass.h"
#include "platform/windows/wideText.h"

#include <array>

namespace {

/// Winamp, and players that show themselves as it does, by their window alone.
class WinampPlayer final : public MediaPlayer {
public:
    WinampPlayer() {
        player.changed = [this] { changed(); };
    }

    [[nodiscard]] Window WinampWindow() override { return fromSystem(player.handle()); }

    [[nodiscard]] std::string WindowTextOf(Window window) override {
        // What the system knows of the title: the player, which may hang, is not asked.
        std::array<wchar_t, 2048> title{};
        const int size =
            InternalGetWindowText(toSystem(window), title.data(), static_cast<int>(title.size()));
        return wideText::toUtf8({title.data(), static_cast<std::size_t>(size)});
    }

    void command(Window window, int number) override {
        if (window == 0) return;
        PostMessageW(toSystem(window), WM_COMMAND, static_cast<WPARAM>(number), 0);
    }

private:
    WindowOfClass player{L"Winamp v1.x"};
};

}  // namespace

std::unique_ptr<MediaPlayer> makeMediaPlayer() { return std::make_unique<WinampPlayer>(); }
