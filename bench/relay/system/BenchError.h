#pragma once

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

/// The benchmark, or one of the relays under it, could not do what a figure needs. The text says
/// what happened and, where somebody can do something about it, what.
class BenchError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Another program holds the one port of the program under test. That says nothing about the
/// latter, so it ends the benchmark instead of counting as a failure.
class PortTaken : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws what the system just refused, with its reason.
[[noreturn]] inline void throwSystemError(const std::string& what) {
    throw BenchError(what + ": " + std::generic_category().message(errno));
}
