#pragma once

#include <memory>

/// Random numbers.
class Chance {
public:
    Chance() = default;
    Chance(const Chance&) = delete;
    Chance& operator=(const Chance&) = delete;
    virtual ~Chance() = default;

    /// A number from 0 to just below 1, each as likely as any other.
    [[nodiscard]] virtual float draw() = 0;
};

/// Random numbers that differ from run to run.
[[nodiscard]] std::unique_ptr<Chance> makeChance();
