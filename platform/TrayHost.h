#pragma once

#include "base/Event.h"

#include <memory>

/// Finds out when the desktop has a place for the icon.
class TrayHost {
public:
    /// The desktop has a place for the icon. Raised once.
    Event<> found;

    TrayHost() = default;
    TrayHost(const TrayHost&) = delete;
    TrayHost& operator=(const TrayHost&) = delete;
    virtual ~TrayHost() = default;

    /// Begins to look and returns at once. It goes on until it finds one, and costs nothing while
    /// nothing changes.
    virtual void search() = 0;
};

/// It does not look before `search`.
[[nodiscard]] std::unique_ptr<TrayHost> makeTrayHost();
