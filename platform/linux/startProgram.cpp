#include "platform/linux/startProgram.h"

#include "base/Failure.h"

#include <cerrno>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class Start {
public:
    Start() {
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setflags(
            &attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
        sigset_t signals;
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes, &signals);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes, &signals);
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_adddup2(&actions, STDIN_FILENO, STDOUT_FILENO);
        posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    }
    ~Start() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;

    /// The error number of the start, 0 when the program runs.
    [[nodiscard]] int run(char* const* arguments) const {
        pid_t process = -1;
        return posix_spawnp(&process, arguments[0], &actions, &attributes, arguments, environ);
    }

private:
    posix_spawnattr_t attributes{};
    posix_spawn_file_actions_t actions{};
};

}  // namespace

void startProgram(std::vector<std::string> command) {
    std::vector<char*> arguments;
    for (std::string& word : command) {
        if (word.find('\0') != std::string::npos) throw Failure("a word cannot hold a zero");
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    const Start start;
    // A process in between starts it and ends at once: the system then reaps the program, and
    // nothing here has to notice its end.
    const pid_t between = fork();
    if (between < 0) throw Failure(std::strerror(errno));
    if (between == 0) _exit(start.run(arguments.data()));
    int status = 0;
    while (waitpid(between, &status, 0) < 0) {
        // Where the system reaps by itself there is no status to read, and the program runs.
        if (errno != EINTR) return;
    }
    if (!WIFEXITED(status)) throw Failure("the start was broken off");
    if (const int error = WEXITSTATUS(status); error != 0) throw Failure(std::strerror(error));
}
