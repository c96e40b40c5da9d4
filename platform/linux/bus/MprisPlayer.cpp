#include "platform/linux/bus/MprisPlayer.h"

#include <QMetaObject>

#include <utility>

namespace {

/// The player's method for a command number; null where there is none.
const char* methodOf(int number, MprisStatus status) {
    switch (number) {
        case 40044: return "Previous";
        case 40045: return "Play";
        // The command does not start a player that is stopped, which this method would do.
        case 40046: return status == MprisStatus::Stopped ? nullptr : "PlayPause";
        case 40047: return "Stop";
        case 40048: return "Next";
        default: return nullptr;
    }
}

}  // namespace

MprisPlayer::MprisPlayer() {
    bus.told = [this](const QString& owner, const QVariantMap& properties) {
        players.tell(owner, properties);
        tellLater();
    };
    bus.left = [this](const QString& owner) {
        players.remove(owner);
        tellLater();
    };
}

void MprisPlayer::command(Window window, int number) {
    const auto status = players.statusOf(window);
    if (!status) return;
    if (const char* const method = methodOf(number, *status)) {
        bus.command(players.ownerOf(window), method);
    }
}

void MprisPlayer::tellLater() {
    // Once for all changes that are waiting: a player may tell of each second that it plays.
    if (std::exchange(isToTell, true)) return;
    QMetaObject::invokeMethod(
        &bus, [this] { tellIfChanged(); }, Qt::QueuedConnection);
}

void MprisPlayer::tellIfChanged() {
    isToTell = false;
    const Window window = WinampWindow();
    std::string title = WindowTextOf(window);
    if (window == toldWindow && title == toldTitle) return;
    toldWindow = window;
    toldTitle = std::move(title);
    changed();
}

std::unique_ptr<MediaPlayer> makeMediaPlayer() { return std::make_unique<MprisPlayer>(); }
