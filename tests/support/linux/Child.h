#pragma once

#include "platform/linux/Descriptor.h"

#include <string>
#include <vector>

#include <sys/types.h>

/// Another program that a test needs. It ends with its owner, and also when the test dies.
class Child {
public:
    Child() = default;
    /// Starts it, found through PATH, with its standard output for `readLine`.
    explicit Child(const std::vector<std::string>& command);
    Child(Child&& other) noexcept;
    Child& operator=(Child&& other) noexcept;
    ~Child();

    [[nodiscard]] pid_t number() const { return process; }
    /// The next line of its output. Throws `std::runtime_error` when none comes.
    [[nodiscard]] std::string readLine();

private:
    pid_t process = -1;
    Descriptor output;
};
