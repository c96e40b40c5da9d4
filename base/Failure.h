#pragma once

#include <concepts>
#include <limits>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>

/// What may not be there is a `std::optional`, and its own comparisons are the rule: `!=` with
/// nothing is true, `==` with nothing is false. Where nothing else can be done without it, `need`
/// abandons the tool and its callers, up to the `attempt` that skips them as one step.

/// A step that was abandoned: what it needs is not there, or not possible. The user sees nothing
/// of it, unless nobody skips the step and it ends the whole event.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Runs one step; a step that is abandoned is skipped, and what comes after it goes on. What the
/// step had done before stays.
template <std::invocable Step>
void attempt(Step&& step) {
    try {
        std::forward<Step>(step)();
    } catch (const Failure&) {
    }
}

/// What is there; abandons the step, for `reason`, when it is not.
template <typename T>
[[nodiscard]] T need(std::optional<T> value, const char* reason = "something is missing") {
    if (!value) throw Failure(reason);
    return *std::move(value);
}

/// Abandons the step, for `reason`, unless what it needs was `done`.
inline void need(bool done, const char* reason) {
    if (!done) throw Failure(reason);
}

/// The answer of a test that what it looks at may leave open. A `std::optional<bool>` would be
/// taken for true when it holds false.
enum class Answer { No, Yes, Unknown };

/// True unless the answer is no.
[[nodiscard]] constexpr bool mayBe(Answer answer) { return answer != Answer::No; }

/// True when the answer is yes.
[[nodiscard]] constexpr bool surely(Answer answer) { return answer == Answer::Yes; }

/// The answer; abandons the step when it is unknown.
[[nodiscard]] inline bool need(Answer answer) {
    if (answer == Answer::Unknown) throw Failure("a test has no answer");
    return answer == Answer::Yes;
}

/// `value` as a `Narrow`; nothing where it does not fit, so that it never wraps.
template <std::integral Narrow, std::integral Wide>
[[nodiscard]] constexpr std::optional<Narrow> checked(Wide value) {
    if (!std::in_range<Narrow>(value)) return std::nullopt;
    return static_cast<Narrow>(value);
}
