#pragma once

#include "tests/support/Relay.h"

#include <string>
#include <string_view>

/// Where a client and a server talk through the program and the visitor sees both ends of it.
class Stage {
public:
    explicit Stage(Relay relay) : relay(std::move(relay)) {}

    void clientSends(std::string_view bytes);
    void serverSends(std::string_view bytes);
    /// What comes to the server without its client having sent it on this connection.
    void serverReceives();
    /// The same for the client.
    void clientReceives();

private:
    Relay relay;
};

/// Prints a text, in lines that the terminal has room for.
void say(std::string_view text);

/// A headline and what there is to see below it.
void announce(std::string_view headline, std::string_view text);
