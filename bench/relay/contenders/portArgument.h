#pragma once

#include "bench/relay/system/BenchError.h"

#include <charconv>
#include <cstdint>
#include <string_view>

/// The port that a relay of the benchmark is to listen on, from its only argument.
[[nodiscard]] inline std::uint16_t portArgument(int count, char** arguments) {
    const std::string_view text = count == 2 ? arguments[1] : "";
    std::uint16_t port = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), port);
    if (text.empty() || result.ec != std::errc{} || result.ptr != text.data() + text.size()) {
        throw BenchError("give the port to listen on as the only argument");
    }
    return port;
}
