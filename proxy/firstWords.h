#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What the program says when clients can connect, in lines. `addresses` are those of the machine;
/// 0x7F000001 is 127.0.0.1. Other machines may know it by each of them, but for loopback ones.
[[nodiscard]] std::vector<std::string> firstWords(std::string_view version, std::uint16_t port,
                                                  std::span<const std::uint32_t> addresses);
