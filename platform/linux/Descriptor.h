#pragma once

#include <utility>

#include <unistd.h>

/// A descriptor that is closed with its owner. A negative number is none.
class Descriptor {
public:
    Descriptor() = default;
    /// Owns `number` from now on.
    explicit Descriptor(int number) : number(number) {}
    Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }
    ~Descriptor() { reset(); }

    /// Closes it now.
    void reset() {
        if (number >= 0) close(std::exchange(number, -1));
    }
    /// Its number, which stays this object's.
    [[nodiscard]] int get() const { return number; }

private:
    int number = -1;
};
