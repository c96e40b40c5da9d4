#pragma once

#include "platform/shared/Readiness.h"
#include "platform/windows/HiddenWindow.h"

#include <chrono>
#include <map>

/// All sockets by the messages of one window, which come from the loop of windows itself: also
/// while the user drags a window, when that loop is not ours.
class Reactor final : public Readiness, private HiddenWindow {
public:
    Reactor();
    ~Reactor();

    void add(SocketHandle socket, Interest interest, Watched& watched) override;
    void change(SocketHandle socket, Interest interest, Watched& watched) override;
    void remove(SocketHandle socket, Watched& watched) override;
    /// Does what the loop of windows does, for a caller without one.
    void dispatch() override;

    using HiddenWindow::handle;

private:
    struct Entry {
        SocketHandle socket;
        Watched* watched;
        Interest interest;
        /// The socket is connected, and not still connecting, so it can be asked to send.
        bool isConnected = false;
        /// The other end has finished, which the system says only once.
        bool isFinished = false;
    };
    using Entries = std::map<UINT, Entry>;

    [[nodiscard]] LRESULT onMessage(UINT message, WPARAM first, LPARAM second) override;
    void onSocket(UINT message, WORD event, WORD error);
    [[nodiscard]] UINT messageOf(const Watched& watched) const;
    [[nodiscard]] UINT newMessage();
    void lookAgain(UINT message) const;
    void dispatchOtherMessages();

    Entries entries;
    std::map<const Watched*, UINT> messages;
    UINT lastMessage;
    std::chrono::steady_clock::time_point lastDispatch{};
};
