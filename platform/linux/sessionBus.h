#pragma once

#include <QString>

/// Where the user's session bus is.
namespace sessionBus {

/// The sockets of the user's bus that there are already, as the D-Bus library wants them; empty
/// without any. Without an address the library would start a bus of its own and wait for it.
[[nodiscard]] QString address();

}  // namespace sessionBus
