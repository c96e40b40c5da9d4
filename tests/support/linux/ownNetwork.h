#pragma once

/// Leaves the machine's network for one of the process's own, in which there is loopback alone;
/// false, and nothing has changed, where the system does not allow it. The process may have no
/// second thread.
[[nodiscard]] bool leaveNetwork();

/// The same, but in that network a socket may also be bound to an address of the internet and
/// connect from there: to one of 203.0.113.0/24, which is no network of an interface, or to one of
/// 198.51.100.0/24, which is.
[[nodiscard]] bool leaveNetworkForTheInternet();
