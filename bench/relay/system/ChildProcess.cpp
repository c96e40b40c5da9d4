#include "bench/relay/system/ChildProcess.h"

#include "bench/relay/system/BenchError.h"
#include "platform/linux/Descriptor.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>

namespace {

constexpr std::chrono::seconds timeToEnd{3};

}  // namespace

void adoptOrphans() { prctl(PR_SET_CHILD_SUBREAPER, 1); }

ChildProcess::ChildProcess(ProcessStart start, const std::filesystem::path& log) : log(log) {
    const Descriptor output(open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (output.get() < 0) throwSystemError("cannot write " + log.string());
    start.output = output.get();
    start.errors = output.get();
    start.ownGroup = true;
    // So that a program with children of its own gets the chance to end them too.
    start.signalAtOurEnd = SIGTERM;
    process = startProcess(start);
}

ChildProcess::~ChildProcess() {
    kill(process, SIGTERM);
    const auto deadline = std::chrono::steady_clock::now() + timeToEnd;
    while (isRunning() && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    // The number of the group stays ours until the process is waited for, so this hits nobody else.
    kill(-process, SIGKILL);
    int status = 0;
    while (waitpid(-process, &status, 0) > 0 || errno == EINTR) {
    }
}

bool ChildProcess::isRunning() const {
    siginfo_t ended{};
    const auto id = static_cast<id_t>(process);
    return waitid(P_PID, id, &ended, WEXITED | WNOHANG | WNOWAIT) == 0 && ended.si_pid == 0;
}

std::string ChildProcess::lastLine() const {
    std::ifstream text(log);
    std::string last;
    for (std::string line; std::getline(text, line);) {
        if (!line.empty()) last = line;
    }
    return last;
}
