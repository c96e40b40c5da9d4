#include "tests/support/linux/Child.h"

#include "tests/support/Peer.h"
#include "tests/support/process.h"

#include <array>
#include <csignal>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>

Child::Child(const std::vector<std::string>& command) {
    std::array<int, 2> pipeEnds{};
    if (pipe2(pipeEnds.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    output = Descriptor(pipeEnds[0]);
    const Descriptor childOutput(pipeEnds[1]);
    process = startProcess({.command = command, .output = childOutput.get()});
}

Child::Child(Child&& other) noexcept
    : process(std::exchange(other.process, -1)), output(std::move(other.output)) {}

Child& Child::operator=(Child&& other) noexcept {
    std::swap(process, other.process);
    std::swap(output, other.output);
    return *this;
}

Child::~Child() {
    if (process <= 0) return;
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

std::string Child::readLine() {
    const auto limit = std::chrono::milliseconds(waitLimit).count();
    std::string line;
    for (char next = '\0'; next != '\n';) {
        pollfd entry{output.get(), POLLIN, 0};
        if (poll(&entry, 1, static_cast<int>(limit)) != 1 || read(output.get(), &next, 1) != 1) {
            throw std::runtime_error("a program that the test needs does not answer");
        }
        if (next != '\n') line += next;
    }
    return line;
}
