#include "tests/support/linux/forked.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <exception>
#include <stdexcept>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

bool passesForked(const std::function<void()>& body) {
    // What is waiting to be printed would be printed by both.
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no fork");
    if (child == 0) {
        try {
            body();
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
        }
        std::fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void becomeNobody() {
    if (geteuid() != 0) return;
    if (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0) {
        throw std::runtime_error("the superuser cannot become nobody");
    }
}

rlimit refuseDescriptors() {
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{0, before.rlim_max};
    if (setrlimit(RLIMIT_NOFILE, &none) != 0) throw std::runtime_error("no limit of descriptors");
    return before;
}
