#pragma once

#include <cstdint>
#include <span>

/// IPv4 addresses that begin alike. 0x7F000001 is 127.0.0.1.
struct AddressRange {
    std::uint32_t address;
    /// The bits that count.
    std::uint32_t mask;

    /// Whether `host` begins like these.
    [[nodiscard]] constexpr bool contains(std::uint32_t host) const {
        return ((host ^ address) & mask) == 0;
    }
};

/// Whether `host` is this machine, or can be one of its user's: an address that is not routed on
/// the internet (loopback, private, link-local, shared by a provider's customers).
[[nodiscard]] bool isPrivate(std::uint32_t host);

/// Whether one of the ranges has `host`.
[[nodiscard]] bool isIn(std::span<const AddressRange> ranges, std::uint32_t host);
