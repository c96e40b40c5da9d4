#pragma once

#include "tests/support/process.h"

#include <filesystem>
#include <string>

#include <sys/types.h>

/// Lets the children of an ended program become this process's own, so that `ChildProcess` can wait
/// for them too. To be called once, first of all.
void adoptOrphans();

/// A program that this one has started, in a process group of its own. It ends with this object,
/// with all that it started itself, and also when this process is killed.
class ChildProcess {
public:
    /// Starts it. All that it says goes to the file `log`. Throws `BenchError` when that cannot be
    /// written.
    ChildProcess(ProcessStart start, const std::filesystem::path& log);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// Its number, and that of its group.
    [[nodiscard]] pid_t id() const { return process; }
    /// The program itself has not ended, whatever its own children do.
    [[nodiscard]] bool isRunning() const;

    /// The last line that it wrote, for an error text. May be empty.
    [[nodiscard]] std::string lastLine() const;

private:
    std::filesystem::path log;
    pid_t process;
};
