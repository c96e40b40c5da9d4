#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

/// What to start, and with which changes to the environment.
struct Launch {
    std::vector<std::string> command;
    std::vector<std::pair<std::string, std::string>> variables;
    std::vector<std::string> removedVariables;
    std::filesystem::path log;
};

/// Lets the children of an ended program become this process's own, so that `ChildProcess` can wait
/// for them too. To be called once, first of all.
void adoptOrphans();

/// A program that this one has started, in a process group of its own. It ends with this object,
/// with all that it started itself, and also when this process is killed.
class ChildProcess {
public:
    explicit ChildProcess(const Launch& launch);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    [[nodiscard]] pid_t id() const { return process; }
    [[nodiscard]] bool isRunning() const;

    /// The last line that it wrote, for an error text. May be empty.
    [[nodiscard]] std::string lastLine() const;

private:
    std::filesystem::path log;
    pid_t process;
};
