#pragma once

#include <QString>

/// Where the user's session bus is.
namespace sessionBus {

/// The sockets of the user's bus that the environment names, as the D-Bus library takes them; empty
/// without any. Without an address the library would start a bus of its own and wait for it.
[[nodiscard]] QString address();

/// Leaves in the process's environment the first of the user's buses that answers; where none does
/// so within 2 s in all, the address is one that the library does not connect to. Otherwise the
/// library, and with it Qt as soon as its event loop starts, may wait for a bus for ever.
void select();

}  // namespace sessionBus
