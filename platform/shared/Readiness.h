#pragma once

#include "platform/shared/systemSockets.h"

/// Tells when sockets can be received from and sent to, in the one thread of the program. Each
/// system has its own way. Common to all is this: whoever is told that there is something to
/// receive and calls `accept` or `receive` is told again as long as there is more, and whoever is
/// told that more can be sent and calls `send` is told again after one that did not take all.
/// Whoever makes no such call may be told again or not.
class Readiness {
public:
    /// What somebody waits for.
    struct Interest {
        /// A client, bytes, or the end of the connection.
        bool receiving = false;
        /// Room for bytes, or the end of an attempt to connect.
        bool sending = false;
    };

    /// What has become possible.
    struct Ready {
        bool receiving = false;
        bool sending = false;
        /// The connection has failed. Comes whatever the interest is.
        bool broken = false;
    };

    class Watched {
    public:
        /// May add, change and remove whatever is watched, this one too.
        virtual void ready(Ready now) = 0;

    protected:
        ~Watched() = default;
    };

    Readiness() = default;
    Readiness(const Readiness&) = delete;
    Readiness& operator=(const Readiness&) = delete;
    virtual ~Readiness() = default;

    /// Watches a socket until it is removed, which is to come before it is closed. What it is ready
    /// for already is told as well.
    virtual void add(SocketHandle socket, Interest interest, Watched& watched) = 0;
    virtual void change(SocketHandle socket, Interest interest, Watched& watched) = 0;
    /// `watched` is not called any more, not even for what is known to be ready already.
    virtual void remove(SocketHandle socket, Watched& watched) = 0;

    /// Serves what is ready until nothing is, but not so long that the windows would have to wait.
    /// May be called again while it runs.
    virtual void dispatch() = 0;
};
