#pragma once

#include "platform/Registry.h"

#include <memory>
#include <string>

/// The user's registry, as a test has it: empty but for the keys that are added. Each system has
/// its own way to be this; the tests are the same.
class RegistryStandIn {
public:
    RegistryStandIn();
    ~RegistryStandIn();
    RegistryStandIn(const RegistryStandIn&) = delete;
    RegistryStandIn& operator=(const RegistryStandIn&) = delete;

    /// Adds a key below "Software\Cobweave test", and it stays until this object goes.
    void add(const std::string& name);
    /// The program's side.
    [[nodiscard]] std::unique_ptr<Registry> open() const;

private:
    struct System;
    std::unique_ptr<System> system;
};
