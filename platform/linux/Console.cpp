#include "platform/Console.h"

#include "base/codePage.h"

#include <cerrno>
#include <csignal>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A pipe takes a line of this length, with its end, as a whole or not at all (PIPE_BUF).
constexpr std::size_t longestLine = 4000;

/// Gives a pipe or a terminal another description of our own, which does not block: the flag on the
/// one that is there would count for all processes that share it. Files do not block, and have a
/// place that is shared; sockets cannot be opened again.
void stopBlocking(int stream) {
    struct stat facts {};
    if (fstat(stream, &facts) != 0 || (!S_ISFIFO(facts.st_mode) && !S_ISCHR(facts.st_mode))) return;
    const std::string path = "/proc/self/fd/" + std::to_string(stream);
    const int own = open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (own < 0) return;
    dup2(own, stream);
    close(own);
}

void writeLine(int stream, std::string_view text) {
    std::string line = codePage::printable(codePage::cutUtf8(text, longestLine));
    line.resize(codePage::cutUtf8(line, longestLine).size());
    line += '\n';
    // A stream that is still the one that was inherited may block: it is asked before the write.
    pollfd entry{stream, POLLOUT, 0};
    if (poll(&entry, 1, 0) != 1 || (entry.revents & POLLOUT) == 0) return;
    constexpr int flags = MSG_DONTWAIT | MSG_NOSIGNAL;
    if (send(stream, line.data(), line.size(), flags) >= 0 || errno != ENOTSOCK) return;
    // What cannot be written is lost.
    if (write(stream, line.data(), line.size()) < 0) return;
}

}  // namespace

void console::prepare() {
    // Where a stream is closed, the next file that is opened would get what is written to it.
    int free = -1;
    do {
        free = open("/dev/null", O_RDWR);
    } while (free >= 0 && free <= STDERR_FILENO);
    if (free >= 0) close(free);
    // A terminal may stop a program that writes to it from the background.
    std::signal(SIGTTOU, SIG_IGN);
    stopBlocking(STDOUT_FILENO);
    stopBlocking(STDERR_FILENO);
}

void console::output(std::string_view line) { writeLine(STDOUT_FILENO, line); }

void console::error(std::string_view line) { writeLine(STDERR_FILENO, line); }
