#pragma once

#include <memory>

class Chance {
public:
    Chance() = default;
    Chance(const Chance&) = delete;
    Chance& operator=(const Chance&) = delete;
    virtual ~Chance() = default;

    /// A number from 0 to just below 1, another one each time.
    [[nodiscard]] virtual float draw() = 0;
};

[[nodiscard]] std::unique_ptr<Chance> makeChance();
