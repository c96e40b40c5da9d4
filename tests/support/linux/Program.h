#pragma once

#include "platform/linux/Descriptor.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

/// The program itself as a process of its own, with a store that is thrown away. It ends with this
/// object, by SIGKILL if need be.
///
/// It is the one that the tests were built with or, where COBWEAVE_PROGRAM holds the words of a
/// command, the file that the last of them names, started by the others: "wine .../cobweave.exe".
/// Under Wine it is on the display of the tests, since Windows is never without one, and has their
/// network.
class Program {
public:
    /// Its port, which is fixed.
    static constexpr std::uint16_t port = 1090;

    using Environment = std::map<std::string, std::string>;

    struct Options {
        /// Set on top of an environment that, on Linux, is without a display.
        Environment environment = {};
        /// The folder for the settings of all programs, where it is not one that is thrown away.
        std::filesystem::path settings = {};
        /// Nobody reads what it says on standard error: writing there fails.
        bool unread = false;
        /// Standard error is a pipe that is full and that nobody reads: writing there blocks.
        bool blocked = false;
        /// How many descriptors it may have; 0 leaves the limit as it is.
        unsigned long descriptors = 0;
        /// What follows its name on the command line.
        std::vector<std::string> arguments = {};
        /// Called with its folder for settings, before it is started.
        std::function<void(const std::filesystem::path&)> prepare = {};
    };

    /// Whether it is the program for Windows that is tested.
    [[nodiscard]] static bool isForWindows();

    Program() : Program(Options()) {}
    explicit Program(const Options& options);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Waits for the line that says that it listens, and returns it.
    std::string waitUntilReady();

    /// Writes a setting into its store, as another process.
    void setSetting(const std::string& key, const std::string& value);

    /// SIGINT, SIGTERM or SIGKILL. On Windows the first two are the message that asks it to end.
    void signal(int number) const;
    /// All that it has written to standard output, to be called when it has ended.
    [[nodiscard]] std::string waitForOutput();
    /// Waits for its end and returns its exit status, or 256 and the number of the signal that
    /// ended it.
    int waitForEnd();
    [[nodiscard]] bool isRunning();

    /// All that it has written to standard error so far.
    [[nodiscard]] std::string errors() const;
    [[nodiscard]] std::filesystem::path store() const;
    [[nodiscard]] std::filesystem::path notes() const { return folder.path() / "notes.cwv"; }
    /// How many descriptors it has open.
    [[nodiscard]] std::size_t openDescriptors() const;
    /// How often its threads have gone to sleep so far: as often they woke up.
    [[nodiscard]] long wakeUps() const;
    /// Lets it take so many bytes of address space on top of what it has. False where a sanitizer
    /// has taken all of it in advance.
    [[nodiscard]] bool limitMemory(std::size_t more) const;
    /// Its resident memory, in bytes.
    [[nodiscard]] std::size_t memory() const;

private:
    /// Reads what comes next on its standard output; false at the end of that.
    bool readOutput();

    TemporaryFolder folder;
    Descriptor output;
    Descriptor blockedErrors;
    std::string outputSoFar;
    pid_t process = -1;
    int status = -1;
};
