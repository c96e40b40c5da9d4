#include "tests/support/linux/Program.h"
#include "tests/support/linux/ownNetwork.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

/// Waits until no other of these programs runs, and holds others back until this one ends.
void takeTurn() {
    const std::string user = std::to_string(getuid());
    const auto file = std::filesystem::temp_directory_path() / ("cobweave-tests-1090-" + user);
    const int descriptor = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    flock(descriptor, LOCK_EX);
}

}  // namespace

/// The program's port is fixed. In a network of their own the tests neither disturb a Cobweave that
/// somebody uses nor each other; where there can be none, there is one of them at a time. Under
/// Wine it is Wine's own server that opens all ports, so there the tests stay in its network.
int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    if (Program::isForWindows() || !leaveNetwork()) takeTurn();
    return RUN_ALL_TESTS();
}
