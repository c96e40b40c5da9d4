#pragma once

#include <memory>
#include <string_view>

/// The Windows registry that the client and its add-ons use.
class Registry {
public:
    Registry() = default;
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;
    virtual ~Registry() = default;

    /// Whether the current user has the key `path` now. Its parts are joined by one backslash, and
    /// upper and lower case are the same.
    [[nodiscard]] virtual bool currentUserHasKey(std::string_view path) = 0;
};

/// Without a registry on this machine no key exists.
[[nodiscard]] std::unique_ptr<Registry> makeRegistry();
