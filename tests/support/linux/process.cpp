#include "tests/support/process.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

[[noreturn]] void become(const ProcessStart& start, std::vector<char*>& arguments, pid_t parent) {
    if (start.ownGroup) setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, start.signalAtOurEnd);
    if (getppid() != parent) _exit(127);
    if (start.descriptors > 0) {
        const rlimit limit{start.descriptors, start.descriptors};
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    if (start.output >= 0) dup2(start.output, STDOUT_FILENO);
    if (start.errors >= 0) dup2(start.errors, STDERR_FILENO);
    for (const auto& [name, value] : start.environment) {
        if (value) {
            setenv(name.c_str(), value->c_str(), 1);
        } else {
            unsetenv(name.c_str());
        }
    }
    execvp(arguments.front(), arguments.data());
    dprintf(STDERR_FILENO, "cannot start %s: %s\n", arguments.front(), std::strerror(errno));
    _exit(127);
}

}  // namespace

pid_t startProcess(const ProcessStart& start) {
    std::vector<char*> arguments;
    for (const std::string& word : start.command)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process < 0) throw std::runtime_error("cannot start a process");
    if (process == 0) become(start, arguments, parent);
    // Here too, so that the group is there when this returns.
    if (start.ownGroup) setpgid(process, process);
    return process;
}

long wakeUpsOf(pid_t process) {
    long sum = 0;
    std::error_code ended;
    for (const auto& thread :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task", ended)) {
        std::ifstream facts(thread.path() / "status");
        for (std::string word; facts >> word;) {
            if (word != "voluntary_ctxt_switches:") continue;
            long count = 0;
            facts >> count;
            sum += count;
        }
    }
    return sum;
}

std::string windowsPath(const std::filesystem::path& path) {
    std::string text = "Z:" + path.string();
    std::ranges::replace(text, '/', '\\');
    return text;
}
