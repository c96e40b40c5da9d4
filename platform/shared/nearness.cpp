#include "platform/shared/nearness.h"

#include <algorithm>

namespace {

constexpr AddressRange privateRanges[] = {
    {0x7F000000, 0xFF000000},  // 127.0.0.0/8, this machine
    {0x0A000000, 0xFF000000},  // 10.0.0.0/8
    {0xAC100000, 0xFFF00000},  // 172.16.0.0/12
    {0xC0A80000, 0xFFFF0000},  // 192.168.0.0/16
    {0xA9FE0000, 0xFFFF0000},  // 169.254.0.0/16, link-local
    {0x64400000, 0xFFC00000},  // 100.64.0.0/10, behind a provider's router
};

}  // namespace

bool isPrivate(std::uint32_t host) { return isIn(privateRanges, host); }

bool isIn(std::span<const AddressRange> ranges, std::uint32_t host) {
    return std::ranges::any_of(ranges,
                               [host](const AddressRange& range) { return range.contains(host); });
}
