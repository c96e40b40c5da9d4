#include "platform/linux/EndSignals.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <system_error>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace {

/// A signal handler reaches nothing but what the whole process shares. It hands the signal on to
/// the event loop; programs that are started later begin with their own handling again.
int raised = -1;

void handleSignal(int /*signal*/) {
    const std::uint64_t once = 1;
    (void)!write(raised, &once, sizeof once);
}

void setHandler(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

}  // namespace

EndSignals::EndSignals(Readiness& readiness, Event<> arrived)
    : readiness(readiness), arrived(std::move(arrived)) {
    raised = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    if (raised < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
    readiness.add(raised, {.receiving = true}, *this);
    setHandler(handleSignal);
}

EndSignals::~EndSignals() {
    setHandler(SIG_DFL);
    readiness.remove(raised, *this);
    close(std::exchange(raised, -1));
}

void EndSignals::ready(Readiness::Ready /*now*/) {
    std::uint64_t count = 0;
    (void)!read(raised, &count, sizeof count);
    arrived();
}
