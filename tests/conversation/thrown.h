#pragma once

#include <cstddef>

/// How many exceptions the program's own code has thrown in this process.
[[nodiscard]] std::size_t thrown();
