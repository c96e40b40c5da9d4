#include "platform/Chance.h"

#include <random>

namespace {

class SystemChance final : public Chance {
public:
    [[nodiscard]] float draw() override {
        // The number has as many bits as a float holds exactly: rounding could give 1 otherwise.
        constexpr unsigned surplusBits = 8;
        constexpr float steps = 1 << 24;
        const auto step = static_cast<std::uint32_t>(generator()) >> surplusBits;
        return static_cast<float>(step) / steps;
    }

private:
    std::mt19937 generator{std::random_device()()};
};

}  // namespace

std::unique_ptr<Chance> makeChance() { return std::make_unique<SystemChance>(); }
