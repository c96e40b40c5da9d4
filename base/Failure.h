#pragma once

#include <concepts>
#include <limits>
#include <stdexcept>
#include <type_traits>
#include <utility>

/// A step that could not be done: a word that is not there, a number that does not fit, a send on
/// a socket that is gone. It is never shown; it ends the step that it happened in.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Runs one step; a failed step is skipped and what comes after it goes on. An assignment whose
/// right side fails leaves its target as it was.
template <std::invocable Step>
void attempt(Step&& step) {
    try {
        std::forward<Step>(step)();
    } catch (const Failure&) {
    }
}

/// The answer of a test; one that cannot be computed is a yes.
template <std::predicate Test>
[[nodiscard]] bool holds(Test&& test) {
    try {
        return std::forward<Test>(test)();
    } catch (const Failure&) {
        return true;
    }
}

/// `value` as a `Narrow`; fails where it does not fit, and never wraps.
template <std::integral Narrow, std::integral Wide>
[[nodiscard]] constexpr Narrow checked(Wide value) {
    if (!std::in_range<Narrow>(value)) throw Failure("number out of range");
    return static_cast<Narrow>(value);
}
