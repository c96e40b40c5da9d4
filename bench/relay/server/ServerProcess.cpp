#include "bench/relay/server/ServerProcess.h"

#include "bench/relay/server/traffic.h"
#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/interruption.h"

#include <chrono>
#include <csignal>
#include <exception>
#include <new>
#include <string>

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

[[noreturn]] void serve(Server listener, ServerFacts& facts, pid_t parent) {
    // An interruption is the parent's to handle.
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(1);
    try {
        TrafficServer(std::move(listener), facts).run();
    } catch (const std::exception&) {
        _exit(1);
    }
}

}  // namespace

ServerProcess::ServerProcess() {
    void* const shared = mmap(nullptr, sizeof(ServerFacts), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED) throwSystemError("cannot get shared memory");
    facts = new (shared) ServerFacts;

    Server listener;
    serverPort = listener.port();
    const pid_t parent = getpid();
    process = fork();
    if (process < 0) throwSystemError("cannot start the traffic server");
    if (process == 0) serve(std::move(listener), *facts, parent);
}

ServerProcess::~ServerProcess() {
    kill(process, SIGKILL);
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR)
        continue;
    munmap(facts, sizeof(ServerFacts));
}

void ServerProcess::releaseHeld() const {
    const Descriptor socket = makeClientSocket();
    if (!tryConnect(socket.get(), serverPort)) throw BenchError("the traffic server has ended");
    sendAll(socket.get(), traffic::release);
    std::string answer(traffic::release.size(), '\0');
    receiveExactly(socket.get(), answer.data(), answer.size());
}

void ServerProcess::waitUntilIdle() const {
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 5s;
    while (facts->openConnections != 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            throw BenchError(
                "connections that the client had closed were still open at the server "
                "five seconds later");
        }
        pauseFor(1ms);
    }
}
