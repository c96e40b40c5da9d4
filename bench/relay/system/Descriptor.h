#pragma once

#include <utility>

#include <unistd.h>

/// Owns one file descriptor.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int owned) : number(owned) {}
    Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number >= 0) ::close(number);
    }

    [[nodiscard]] int get() const { return number; }

private:
    int number = -1;
};
