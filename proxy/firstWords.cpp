#include "proxy/firstWords.h"

namespace {

constexpr std::uint32_t loopback = 0x7F;

std::string dotted(std::uint32_t address) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        text += std::to_string(address >> shift & 0xFF);
        if (shift > 0) text += '.';
    }
    return text;
}

}  // namespace

std::vector<std::string> firstWords(std::string_view version, std::uint16_t port,
                                    std::span<const std::uint32_t> addresses) {
    std::string others;
    for (const std::uint32_t address : addresses) {
        if (address >> 24 == loopback) continue;
        others += (others.empty() ? "" : " or ") + dotted(address);
    }
    std::string first =
        "Cobweave " + std::string(version) +
        " is ready. In Messenger, use a proxy server of type SOCKS version 4, server 127.0.0.1";
    if (!others.empty()) first += " (from another machine: " + others + ")";
    first += ", port " + std::to_string(port) + '.';
    return {std::move(first), "The port is open to your network; README says how to close it."};
}
