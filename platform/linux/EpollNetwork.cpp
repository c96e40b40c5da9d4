#include "platform/linux/EpollNetwork.h"

#include "platform/linux/EpollSocket.h"

#include <utility>

#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds retryInterval{1000};

void raiseDescriptorLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace

EpollNetwork::EpollNetwork(Reactor& reactor, EventLoop& loop)
    : reactor(reactor), retry(loop.makeTimer()) {
    raiseDescriptorLimit();
    retry->tick = [this] {
        if (starving != nullptr) std::exchange(starving, nullptr)->resumeListening();
        if (starving == nullptr) retry->disable();
    };
}

EpollNetwork::~EpollNetwork() = default;

std::unique_ptr<Winsock> EpollNetwork::makeWinsock() {
    return std::make_unique<EpollSocket>(*this);
}

void EpollNetwork::closeDescriptor(int descriptor) {
    close(descriptor);
    if (starving != nullptr) std::exchange(starving, nullptr)->resumeListening();
}

void EpollNetwork::waitForDescriptor(EpollSocket& listener) {
    starving = &listener;
    retry->enable(retryInterval);
}

void EpollNetwork::forget(const EpollSocket& listener) {
    if (starving == &listener) starving = nullptr;
}
