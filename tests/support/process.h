#pragma once

#include <csignal>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

/// What to start, and how.
struct ProcessStart {
    /// The program, found through PATH, and its arguments.
    std::vector<std::string> command;
    /// Variables to be set, and those to be taken out, which have no value.
    std::map<std::string, std::optional<std::string>> environment = {};
    /// The descriptors that it writes to; -1 stands for those of this process. It reads nothing.
    int output = -1;
    int errors = -1;
    /// How many descriptors it may have; 0 leaves the limit as it is.
    unsigned long descriptors = 0;
    /// It leads a process group, of which its own children are too.
    bool ownGroup = false;
    /// What it gets when the thread that started it dies.
    int signalAtOurEnd = SIGKILL;
};

/// Starts a process, which the caller has to wait for. Throws `std::runtime_error` when the system
/// has no process left. A program that cannot be started says so where its errors go, and ends with
/// 127.
[[nodiscard]] pid_t startProcess(const ProcessStart& start);

/// How often the threads of a process that live now have gone to sleep so far: as often they woke
/// up. None when it has ended.
[[nodiscard]] long wakeUpsOf(pid_t process);

/// As Windows programs under Wine name a file of this machine.
[[nodiscard]] std::string windowsPath(const std::filesystem::path& path);
