#pragma once

#include <algorithm>

/// What may go into one drawing of a movie, so that no movie holds the program up. Counted, and
/// not measured: a movie looks the same on every machine. The unit is what about a nanosecond does.
class DrawingBudget {
public:
    static constexpr double whole = 8e6;

    /// False when that is more than is left; from then on there is nothing left.
    [[nodiscard]] bool take(double cost) {
        spent += cost;
        return spent <= whole;
    }
    /// Whether that much is left.
    [[nodiscard]] bool has(double cost) const { return spent + cost <= whole; }
    [[nodiscard]] double taken() const { return std::min(spent, whole); }
    [[nodiscard]] bool exceeded() const { return spent > whole; }

private:
    double spent = 0;
};
