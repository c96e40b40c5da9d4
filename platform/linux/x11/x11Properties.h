#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>

/// What stands in a window's property. An answer that is null or of another kind than expected is
/// as none: anybody can write anything there.
namespace x11Properties {

/// Whether there is such a property at all, of whatever kind.
[[nodiscard]] bool isThere(const xcb_get_property_reply_t* reply);
/// The bytes of a text, within the life of the reply.
[[nodiscard]] std::optional<std::string_view> textIn(const xcb_get_property_reply_t* reply);
/// Windows, atoms or numbers.
[[nodiscard]] std::vector<std::uint32_t> numbersIn(const xcb_get_property_reply_t* reply);
/// The first number; 0 without one.
[[nodiscard]] std::uint32_t numberIn(const xcb_get_property_reply_t* reply);

}  // namespace x11Properties
