#pragma once

#include <string_view>

/// Reads, plays, points at and draws whatever the bytes are. What the fuzzer does with each of its
/// inputs, and the tests with those that it has left behind.
void playMovie(std::string_view file);
