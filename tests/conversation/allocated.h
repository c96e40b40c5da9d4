#pragma once

#include <cstddef>

/// How often the process has asked for memory with `new`, also within its strings and containers.
[[nodiscard]] std::size_t allocated();
