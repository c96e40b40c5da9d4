#pragma once

#include "base/Event.h"
#include "platform/shared/PlayerList.h"
#include "platform/windows/HiddenWindow.h"
#include "platform/windows/mediaControl.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

/// A reference to an object of the system's, which is released with this one.
template <typename Object>
class Reference {
public:
    Reference() = default;
    ~Reference() { reset(); }
    Reference(Reference&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    Reference& operator=(Reference&& other) noexcept {
        std::swap(object, other.object);
        return *this;
    }

    /// The object; null for an empty reference.
    [[nodiscard]] Object* get() const { return object; }
    Object* operator->() const { return object; }
    explicit operator bool() const { return object != nullptr; }
    /// The place where a function puts its reference. What was there before is released.
    [[nodiscard]] Object** out() {
        reset();
        return &object;
    }
    /// Releases the object and leaves the reference empty.
    void reset() {
        if (object != nullptr) object->Release();
        object = nullptr;
    }

private:
    Object* object = nullptr;
};

/// The media session that the system's own keys control, as a player of the form in which others
/// are seen: its song in a title that Winamp could have, and the same commands. What it says comes
/// on threads of the system, as messages to a hidden window, so all that is asked for here is known
/// already. Without such sessions, before Windows 10 or in Wine, there is no player.
class MediaSession final : private HiddenWindow {
public:
    using Window = PlayerList::Window;

    /// How the system's sessions are reached; an empty reference where there are none.
    using Activate = std::function<Reference<mediaControl::Statics>()>;
    [[nodiscard]] static Reference<mediaControl::Statics> ofSystem();

    /// There is no session until the system has answered, which takes a turn of the loop or more.
    explicit MediaSession(const Activate& activate = ofSystem);
    ~MediaSession();

    /// The player is another one, or its title is.
    Event<> changed;

    /// The same as in `MediaPlayer`.
    [[nodiscard]] Window window() const { return players.chosen(); }
    [[nodiscard]] std::string titleOf(Window window) { return players.titleOf(window); }
    void command(Window window, int number);

private:
    class Notice;

    [[nodiscard]] LRESULT onMessage(UINT message, WPARAM first, LPARAM second) override;
    [[nodiscard]] Reference<mediaControl::Callback> notice(const IID& kind, UINT message) const;
    void takeManager();
    void takeSession();
    void leaveSession();
    void readStatus();
    void askForSong();
    void readSong();

    /// The window that is posted to; null when this object is gone, which callbacks may outlive.
    std::shared_ptr<std::atomic<HWND>> receiver;
    HRESULT apartment;
    Reference<mediaControl::Operation<mediaControl::Manager*>> request;
    Reference<mediaControl::Manager> manager;
    EventRegistrationToken sessionToken{};
    Reference<mediaControl::Session> session;
    EventRegistrationToken playbackToken{};
    EventRegistrationToken propertiesToken{};
    Reference<mediaControl::Operation<mediaControl::MediaProperties*>> question;
    /// The session that was found last has this number, and its player this name.
    std::uint64_t sessionNumber = 0;
    std::string name;
    PlayerList players;
};
