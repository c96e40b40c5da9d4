#pragma once

#include <memory>
#include <string_view>

/// The Windows registry in which the client and its add-ons live. Without one no key exists.
class Registry {
public:
    Registry() = default;
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;
    virtual ~Registry() = default;

    /// Whether the current user has the key `path` (pieces joined by one backslash, capitals do not
    /// matter). The answer is that of this moment.
    [[nodiscard]] virtual bool currentUserHasKey(std::string_view path) = 0;
};

[[nodiscard]] std::unique_ptr<Registry> makeRegistry();
