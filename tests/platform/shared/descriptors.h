#pragma once

#include <cstddef>
#include <cstdint>

/// How many descriptors this process has open.
[[nodiscard]] std::size_t countDescriptors();

/// The descriptor of this process whose connection has `port` at its other end; -1 when there is
/// none.
[[nodiscard]] int descriptorTo(std::uint16_t port);

/// The port at the own end of a connection.
[[nodiscard]] std::uint16_t localPortOf(int descriptor);
