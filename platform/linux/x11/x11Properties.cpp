#include "platform/linux/x11/x11Properties.h"

#include <algorithm>
#include <cstring>

bool x11Properties::isThere(const xcb_get_property_reply_t* reply) {
    return reply != nullptr && reply->type != XCB_ATOM_NONE;
}

std::optional<std::string_view> x11Properties::textIn(const xcb_get_property_reply_t* reply) {
    if (!isThere(reply) || reply->format != 8) return std::nullopt;
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply));
    return std::string_view(static_cast<const char*>(xcb_get_property_value(reply)), length);
}

std::vector<std::uint32_t> x11Properties::numbersIn(const xcb_get_property_reply_t* reply) {
    if (!isThere(reply) || reply->format != 32) return {};
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply));
    std::vector<std::uint32_t> numbers(length / sizeof(std::uint32_t));
    if (length > 0) std::memcpy(numbers.data(), xcb_get_property_value(reply), length);
    return numbers;
}

std::uint32_t x11Properties::numberIn(const xcb_get_property_reply_t* reply) {
    const std::vector<std::uint32_t> numbers = numbersIn(reply);
    return numbers.empty() ? 0 : numbers.front();
}
