#include "bench/relay/system/processFacts.h"

#include "bench/relay/system/BenchError.h"
#include "tests/support/process.h"

#include <algorithm>
#include <charconv>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// The group of the process that a folder of /proc describes, 0 when there is none any more.
pid_t groupOf(const fs::path& folder) {
    std::ifstream file(folder / "stat");
    std::string text;
    std::getline(file, text);
    // The name stands in brackets and may itself hold brackets and blanks; behind it come the
    // state, the parent and the group.
    const auto nameEnd = text.rfind(')');
    if (nameEnd == std::string::npos) return 0;
    char state = 0;
    long parent = 0;
    long group = 0;
    if (std::sscanf(text.c_str() + nameEnd + 1, " %c %ld %ld", &state, &parent, &group) != 3)
        return 0;
    return state == 'Z' ? 0 : static_cast<pid_t>(group);
}

std::vector<pid_t> membersOf(pid_t group) {
    std::vector<pid_t> members;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        pid_t process = 0;
        const auto end = name.data() + name.size();
        if (std::from_chars(name.data(), end, process).ptr != end) continue;
        if (groupOf(entry.path()) == group) members.push_back(process);
    }
    if (members.empty()) throw BenchError("the relay has ended while it was measured");
    return members;
}

fs::path folderOf(pid_t process) { return fs::path("/proc") / std::to_string(process); }

/// The number behind `key` in a file of lines such as "Pss:   123 kB".
std::int64_t numberInFile(const fs::path& path, const std::string& key) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(key)) return std::stoll(line.substr(key.size()));
    }
    throw BenchError("no " + key + " in " + path.string() + "; may this user read it?");
}

std::int64_t sumOfMemory(pid_t group, const std::string& key) {
    std::int64_t sum = 0;
    for (const pid_t process : membersOf(group)) {
        sum += numberInFile(folderOf(process) / "smaps_rollup", key) * 1024;
    }
    return sum;
}

}  // namespace

std::int64_t processorNanoseconds(pid_t group) {
    std::int64_t sum = 0;
    for (const pid_t process : membersOf(group)) {
        clockid_t clock{};
        timespec time{};
        if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0) {
            throw BenchError("cannot read the processor time of process " +
                             std::to_string(process));
        }
        sum += std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
    }
    return sum;
}

std::int64_t memoryBytes(pid_t group) { return sumOfMemory(group, "Pss:"); }

std::int64_t ownMemoryBytes(pid_t group) { return sumOfMemory(group, "Pss_Anon:"); }

std::int64_t wakeUps(pid_t group) {
    std::int64_t sum = 0;
    for (const pid_t process : membersOf(group)) {
        sum += wakeUpsOf(process);
    }
    return sum;
}
