#include "bench/relay/system/ChildProcess.h"

#include "bench/relay/system/BenchError.h"
#include "platform/linux/Descriptor.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <thread>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds timeToEnd{3};

[[noreturn]] void becomeProgram(const Launch& launch, pid_t parent, int log) {
    setpgid(0, 0);
    // SIGTERM, so that a program with children of its own gets the chance to end them too.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) _exit(127);

    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    for (const auto& [name, value] : launch.variables)
        setenv(name.c_str(), value.c_str(), 1);
    for (const auto& name : launch.removedVariables)
        unsetenv(name.c_str());

    std::vector<char*> arguments;
    for (const auto& word : launch.command)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execv(arguments.front(), arguments.data());
    dprintf(STDERR_FILENO, "cannot start %s: %s\n", arguments.front(),
            std::generic_category().message(errno).c_str());
    _exit(127);
}

}  // namespace

void adoptOrphans() { prctl(PR_SET_CHILD_SUBREAPER, 1); }

ChildProcess::ChildProcess(const Launch& launch) : log(launch.log), process(-1) {
    const Descriptor output(open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (output.get() < 0) throwSystemError("cannot write " + log.string());
    const pid_t parent = getpid();
    process = fork();
    if (process < 0) throwSystemError("cannot start a process");
    if (process == 0) becomeProgram(launch, parent, output.get());
    setpgid(process, process);
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
