#pragma once

#include <cstddef>
#include <string>

/// Keeps this process, and all that it starts from now on, on one core: the last one that it may
/// use, since the first one usually also serves the devices. Returns its number.
int pinToOneCore();

/// Raises the limit of open descriptors as far as this user may. Returns the limit.
std::size_t raiseDescriptorLimit();

/// Date, kernel, processor and number of cores, in one line each.
[[nodiscard]] std::string machineDescription();
