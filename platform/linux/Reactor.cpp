#include "platform/linux/Reactor.h"

#include <algorithm>
#include <chrono>
#include <system_error>

#include <sys/epoll.h>
#include <unistd.h>

namespace {

/// How long the sockets may keep the windows waiting.
constexpr std::chrono::milliseconds longestDispatch{4};

epoll_event request(std::uint32_t events, Reactor::Watched& watched) {
    epoll_event event{};
    event.events = events;
    event.data.ptr = &watched;
    return event;
}

}  // namespace

struct Reactor::Batch {
    static constexpr int size = 64;

    std::array<epoll_event, size> events;
    int count = 0;
    Batch* outer = nullptr;
};

Reactor::Reactor() : set(epoll_create1(EPOLL_CLOEXEC)) {
    if (set < 0) throw std::system_error(errno, std::generic_category(), "epoll_create1");
}

Reactor::~Reactor() { close(set); }

void Reactor::add(int watchedDescriptor, std::uint32_t events, Watched& watched) const {
    epoll_event event = request(events, watched);
    epoll_ctl(set, EPOLL_CTL_ADD, watchedDescriptor, &event);
}

void Reactor::change(int watchedDescriptor, std::uint32_t events, Watched& watched) const {
    epoll_event event = request(events, watched);
    epoll_ctl(set, EPOLL_CTL_MOD, watchedDescriptor, &event);
}

void Reactor::remove(int watchedDescriptor, Watched& watched) {
    epoll_ctl(set, EPOLL_CTL_DEL, watchedDescriptor, nullptr);
    for (Batch* batch = batches; batch != nullptr; batch = batch->outer) {
        for (int index = 0; index < batch->count; ++index) {
            if (batch->events[index].data.ptr == &watched) batch->events[index].data.ptr = nullptr;
        }
    }
}

void Reactor::dispatch() {
    const auto deadline = std::chrono::steady_clock::now() + longestDispatch;
    Batch batch;
    batch.outer = batches;
    batches = &batch;
    do {
        batch.count = std::max(0, epoll_wait(set, batch.events.data(), Batch::size, 0));
        for (int index = 0; index < batch.count; ++index) {
            auto* const watched = static_cast<Watched*>(batch.events[index].data.ptr);
            if (watched != nullptr) watched->ready(batch.events[index].events);
        }
    } while (batch.count > 0 && std::chrono::steady_clock::now() < deadline);
    batches = batch.outer;
}
