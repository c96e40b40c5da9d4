#pragma once

#include <QString>

/// Where the user's session bus is.
namespace sessionBus {

/// The sockets of the user's bus that there are already, as the D-Bus library wants them; empty
/// without any. Without an address the library would start a bus of its own and wait for it.
[[nodiscard]] QString address();

/// Takes the bus out of the process's sight if it takes connections but does not answer. The
/// library waits for such a bus for ever, and with it Qt, as soon as its event loop starts. Waits
/// 2 s for the answer, which otherwise comes within a millisecond.
void avoidIfMute();

}  // namespace sessionBus
