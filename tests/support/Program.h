#pragma once

#include "tests/support/Descriptor.h"
#include "tests/support/TemporaryFolder.h"

#include <map>
#include <string>

#include <sys/types.h>

/// The program itself as a process of its own, with a store that is thrown away. It ends with this
/// object, by SIGKILL if need be.
class Program {
public:
    using Environment = std::map<std::string, std::string>;

    /// Starts it without a display; `environment` is set on top of that.
    explicit Program(const Environment& environment = {});
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Waits for the line that says that it listens, and returns it.
    std::string waitUntilReady();

    /// Writes a setting into its store, as another process.
    void setSetting(const std::string& key, const std::string& value);

    void signal(int number) const;
    /// Waits for its end and returns its exit status, or 256 and the number of the signal that
    /// ended it.
    int waitForEnd();
    [[nodiscard]] bool isRunning();

    /// All that it has written to standard error so far.
    [[nodiscard]] std::string errors() const;
    [[nodiscard]] const std::filesystem::path& configFolder() const { return folder.path(); }
    [[nodiscard]] std::filesystem::path store() const;
    [[nodiscard]] pid_t id() const { return process; }

private:
    TemporaryFolder folder;
    Descriptor output;
    std::string outputSoFar;
    pid_t process = -1;
    int status = -1;
};
