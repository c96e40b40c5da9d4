#include "platform/linux/Reactor.h"

#include "platform/shared/runEvent.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include <sys/epoll.h>
#include <sys/timerfd.h>

namespace {

/// How long the sockets may keep the windows waiting.
constexpr std::chrono::milliseconds longestDispatch{4};

/// Events are brisk when no more than this lies between two of them.
constexpr std::chrono::milliseconds longestPause{1};

std::uint32_t eventsOf(Readiness::Interest interest) {
    return (interest.receiving ? EPOLLIN : 0U) | (interest.sending ? EPOLLOUT : 0U);
}

Readiness::Ready readyFor(std::uint32_t events) {
    return {(events & EPOLLIN) != 0, (events & EPOLLOUT) != 0,
            (events & (EPOLLHUP | EPOLLERR)) != 0};
}

}  // namespace

class Reactor::Batch {
public:
    static constexpr int size = 64;

    explicit Batch(Batch*& innermost) : outer(innermost), innermost(innermost) { innermost = this; }
    ~Batch() { innermost = outer; }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    std::array<epoll_event, size> events;
    int count = 0;
    Batch* const outer;

private:
    Batch*& innermost;
};

Reactor::Reactor()
    : set(epoll_create1(EPOLL_CLOEXEC)),
      alarm(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)) {
    if (set.get() < 0) throw std::system_error(errno, std::generic_category(), "epoll_create1");
    if (alarm.get() < 0) throw std::system_error(errno, std::generic_category(), "timerfd_create");
    // Nobody is called when it goes off, and edge-triggered it need not be read.
    epoll_event event{};
    event.events = EPOLLIN | EPOLLET;
    epoll_ctl(set.get(), EPOLL_CTL_ADD, alarm.get(), &event);
}

void Reactor::add(SocketHandle descriptor, Interest interest, Watched& watched) {
    control(EPOLL_CTL_ADD, descriptor, interest, watched);
}

void Reactor::change(SocketHandle descriptor, Interest interest, Watched& watched) {
    control(EPOLL_CTL_MOD, descriptor, interest, watched);
}

void Reactor::control(int operation, int descriptor, Interest interest, Watched& watched) const {
    epoll_event event{};
    event.events = eventsOf(interest);
    event.data.ptr = &watched;
    epoll_ctl(set.get(), operation, descriptor, &event);
}

void Reactor::remove(SocketHandle descriptor, Watched& watched) {
    epoll_ctl(set.get(), EPOLL_CTL_DEL, descriptor, nullptr);
    for (Batch* batch = batches; batch != nullptr; batch = batch->outer) {
        for (int index = 0; index < batch->count; ++index) {
            if (batch->events[index].data.ptr == &watched) batch->events[index].data.ptr = nullptr;
        }
    }
}

void Reactor::dispatch() {
    auto now = Clock::now();
    // Early enough for a brisk event to come ahead of the alarm, whose interruption would cost more
    // than the way through the event loop.
    const auto deadline = now + longestDispatch - longestPause;
    // A turn in the middle of an event does not wait for others.
    const bool waits = batches == nullptr && now - lastDispatch < longestPause;
    if (waits) setAlarm();
    Batch batch(batches);
    do {
        batch.count =
            std::max(0, epoll_wait(set.get(), batch.events.data(), Batch::size, waits ? -1 : 0));
        for (int index = 0; index < batch.count; ++index) {
            auto* const watched = static_cast<Watched*>(batch.events[index].data.ptr);
            if (watched == nullptr) continue;
            runEvent([&] { watched->ready(readyFor(batch.events[index].events)); });
        }
        now = Clock::now();
    } while (batch.count > 0 && now < deadline);
    lastDispatch = now;
}

/// Has the wait end with the dispatch. A time for each wait would cost more: the system sets its
/// clock anew whenever somebody begins to wait with one, and a message is relayed in less.
void Reactor::setAlarm() const {
    itimerspec time{};
    time.it_value.tv_nsec = std::chrono::nanoseconds(longestDispatch).count();
    timerfd_settime(alarm.get(), 0, &time, nullptr);
}
