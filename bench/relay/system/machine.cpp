#include "bench/relay/system/machine.h"

#include "bench/relay/system/BenchError.h"

#include <array>
#include <ctime>
#include <fstream>

#include <sched.h>
#include <sys/resource.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace {

std::string processorName() {
    std::ifstream facts("/proc/cpuinfo");
    for (std::string line; std::getline(facts, line);) {
        const auto colon = line.find(": ");
        if (line.starts_with("model name") && colon != std::string::npos) {
            return line.substr(colon + 2);
        }
    }
    return "unknown processor";
}

std::string today() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    std::array<char, 32> text{};
    const auto length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &parts);
    return {text.data(), length};
}

}  // namespace

int pinToOneCore() {
    cpu_set_t cores;
    CPU_ZERO(&cores);
    if (sched_getaffinity(0, sizeof cores, &cores) != 0)
        throwSystemError("cannot ask for the cores");
    int last = 0;
    for (int core = 0; core < CPU_SETSIZE; ++core) {
        if (CPU_ISSET(static_cast<std::size_t>(core), &cores)) last = core;
    }
    CPU_ZERO(&cores);
    CPU_SET(static_cast<std::size_t>(last), &cores);
    if (sched_setaffinity(0, sizeof cores, &cores) != 0)
        throwSystemError("cannot stay on one core");
    return last;
}

std::size_t raiseDescriptorLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0)
        throwSystemError("cannot ask for the descriptor limit");
    limit.rlim_cur = limit.rlim_max;
    // Where the hard limit is "none", the system still refuses more than its own maximum.
    if (setrlimit(RLIMIT_NOFILE, &limit) != 0) getrlimit(RLIMIT_NOFILE, &limit);
    return static_cast<std::size_t>(limit.rlim_cur);
}

std::string machineDescription() {
    utsname system{};
    uname(&system);
    return "date    " + today() + "\nkernel  " + system.sysname + " " + system.release + " " +
           system.machine + "\ncores   " + std::to_string(sysconf(_SC_NPROCESSORS_ONLN)) + ", " +
           processorName() + "\n";
}
