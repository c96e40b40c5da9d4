#pragma once

#include "base/Event.h"

#include <memory>

/// Finds out when the desktop has a place for the icon.
class TrayHost {
public:
    /// The place is there. Comes once.
    Event<> found;

    TrayHost() = default;
    TrayHost(const TrayHost&) = delete;
    TrayHost& operator=(const TrayHost&) = delete;
    virtual ~TrayHost() = default;

    /// Begins to look and returns at once. Looks for as long as it takes, without waking up for it.
    virtual void search() = 0;
};

[[nodiscard]] std::unique_ptr<TrayHost> makeTrayHost();
