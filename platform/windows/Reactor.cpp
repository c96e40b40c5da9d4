#include "platform/windows/Reactor.h"

#include "platform/shared/runEvent.h"

#include <array>
#include <system_error>
#include <utility>

namespace {

/// How long the sockets may keep the windows and the timers waiting.
constexpr std::chrono::milliseconds longestDispatch{4};

/// Each watched socket has a message of its own, so that what is still on its way for one that was
/// closed does not reach the next one, for which the system takes the same number.
constexpr UINT firstMessage = WM_APP;
constexpr UINT messageCount = 0x4000;

constexpr long allEvents = FD_READ | FD_WRITE | FD_ACCEPT | FD_CONNECT | FD_CLOSE;

/// This is no event of the system's: it asks to look at the socket.
constexpr WORD look = 0;

SOCKET toSystem(SocketHandle socket) { return static_cast<SOCKET>(socket); }

/// What is possible with the socket at this moment.
Readiness::Ready readinessOf(SocketHandle socket) {
    const auto only = [&] {
        fd_set set{};
        set.fd_count = 1;
        set.fd_array[0] = toSystem(socket);
        return set;
    };
    fd_set receiving = only();
    fd_set sending = only();
    fd_set failed = only();
    timeval atOnce{};
    if (select(0, &receiving, &sending, &failed, &atOnce) <= 0) return {};
    return {receiving.fd_count > 0, sending.fd_count > 0, failed.fd_count > 0};
}

}  // namespace

Reactor::Reactor() : HiddenWindow(Kind::MessagesOnly), lastMessage(firstMessage) {
    if (handle() == nullptr) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                                "CreateWindowEx");
    }
}

Reactor::~Reactor() = default;

void Reactor::add(SocketHandle socket, Interest interest, Watched& watched) {
    const UINT message = newMessage();
    entries.insert_or_assign(message, Entry{socket, &watched, interest});
    messages.insert_or_assign(&watched, message);
    WSAAsyncSelect(toSystem(socket), handle(), message, allEvents);
    // An attempt to connect may have come to its end before.
    if (interest.sending) lookAgain(message);
}

void Reactor::change(SocketHandle /*socket*/, Interest interest, Watched& watched) {
    const UINT message = messageOf(watched);
    const auto entry = entries.find(message);
    if (entry == entries.end()) return;
    const Interest before = std::exchange(entry->second.interest, interest);
    // The system does not repeat what it has said while nobody was interested.
    const bool isMore =
        (interest.receiving && !before.receiving) || (interest.sending && !before.sending);
    if (isMore) lookAgain(message);
}

void Reactor::remove(SocketHandle socket, Watched& watched) {
    const UINT message = messageOf(watched);
    if (entries.erase(message) == 0) return;
    messages.erase(&watched);
    WSAAsyncSelect(toSystem(socket), handle(), 0, 0);
}

void Reactor::dispatch() {
    const auto deadline = std::chrono::steady_clock::now() + longestDispatch;
    MSG message{};
    while (PeekMessageW(&message, handle(), firstMessage, firstMessage + messageCount - 1,
                        PM_REMOVE) != 0) {
        DispatchMessageW(&message);
        if (std::chrono::steady_clock::now() >= deadline) return;
    }
}

LRESULT Reactor::onMessage(UINT message, WPARAM first, LPARAM second) {
    if (message < firstMessage || message >= firstMessage + messageCount) {
        return ignore(message, first, second);
    }
    dispatchOtherMessages();
    const auto entry = entries.find(message);
    // A socket that was accepted begins with its listener's messages.
    if (entry == entries.end() || toSystem(entry->second.socket) != first) return 0;
    onSocket(message, WSAGETSELECTEVENT(second), WSAGETSELECTERROR(second));
    return 0;
}

void Reactor::onSocket(UINT message, WORD event, WORD error) {
    Entry& entry = entries.at(message);
    const Interest wanted = entry.interest;
    Ready now;
    now.broken = error != 0;
    switch (event) {
        case FD_READ:
        case FD_ACCEPT: now.receiving = true; break;
        case FD_CONNECT:
            now.sending = !now.broken;
            entry.isConnected = now.sending;
            break;
        case FD_WRITE:
            entry.isConnected = true;
            // It comes for each connection once; much may have been sent since.
            now.sending = wanted.sending && readinessOf(entry.socket).sending;
            break;
        case FD_CLOSE:
            now.receiving = true;
            entry.isFinished = true;
            break;
        case look:
            now = readinessOf(entry.socket);
            entry.isConnected = entry.isConnected || now.sending;
            // Urgent bytes count as something exceptional too.
            now.broken = now.broken && !entry.isConnected;
            break;
        default: return;
    }
    now.receiving = now.receiving && wanted.receiving;
    now.sending = now.sending && wanted.sending;
    if (!now.receiving && !now.sending && !now.broken) return;
    runEvent([&] { entry.watched->ready(now); });
    // It may be gone now.
    const auto after = entries.find(message);
    if (after != entries.end() && after->second.isFinished && after->second.interest.receiving) {
        lookAgain(message);
    }
}

UINT Reactor::messageOf(const Watched& watched) const {
    const auto found = messages.find(&watched);
    return found == messages.end() ? 0 : found->second;
}

/// The message that was used the longest time ago.
UINT Reactor::newMessage() {
    do {
        lastMessage = firstMessage + (lastMessage - firstMessage + 1) % messageCount;
    } while (entries.contains(lastMessage) && entries.size() < messageCount);
    return lastMessage;
}

void Reactor::lookAgain(UINT message) const {
    const auto socket = static_cast<WPARAM>(entries.at(message).socket);
    PostMessageW(handle(), message, socket, WSAMAKESELECTREPLY(look, 0));
}

/// Messages of sockets come before those of timers, of the user and of painting, so while many
/// bytes pass nothing else would.
void Reactor::dispatchOtherMessages() {
    const auto now = std::chrono::steady_clock::now();
    if (now - lastDispatch < longestDispatch) return;
    lastDispatch = now;
    struct Range {
        UINT first;
        UINT last;
    };
    constexpr std::array<Range, 5> others{{{WM_TIMER, WM_TIMER},
                                           {WM_KEYFIRST, WM_KEYLAST},
                                           {WM_MOUSEFIRST, WM_MOUSELAST},
                                           {WM_NCMOUSEMOVE, WM_NCXBUTTONDBLCLK},
                                           {WM_PAINT, WM_PAINT}}};
    for (const Range& range : others) {
        MSG message{};
        if (PeekMessageW(&message, nullptr, range.first, range.last, PM_REMOVE) == 0) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    lastDispatch = std::chrono::steady_clock::now();
}
