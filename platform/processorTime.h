#pragma once

#include <chrono>

/// The processor time that this thread has had so far. Waiting for a disk takes none.
[[nodiscard]] std::chrono::nanoseconds processorTime();
