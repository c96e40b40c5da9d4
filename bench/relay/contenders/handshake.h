#pragma once

#include "bench/relay/system/socketTools.h"

/// How a relay is asked for a connection.
enum class Handshake { None, Socks4, Socks5 };

/// Asks for `server` on loopback over a connected socket, and waits for the consent.
void shakeHands(int socket, Handshake handshake, Port server);
