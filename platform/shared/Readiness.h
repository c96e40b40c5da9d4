#pragma once

#include "platform/shared/systemSockets.h"

/// Finds out when sockets can be received from and sent to, and calls those who wait for that, in
/// the one thread of the program.
///
/// Each system has its own way, and this is what all have in common: after a call that there is
/// something to receive comes another one if `accept` or `receive` has left something; after a call
/// that more can be sent comes another one, when there is room again, if `send` did not take all.
/// After a call that led to no such operation there may be another one or not. Each call is an
/// event of its own (platform/shared/runEvent.h).
class Readiness {
public:
    /// What a socket is watched for.
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
        /// The connection has failed. This is reported whatever the interest is.
        bool broken = false;
    };

    /// The owner of a socket that is watched.
    class Watched {
    public:
        /// The socket is ready. May add, change and remove whatever is watched, this one too.
        virtual void ready(Ready now) = 0;

    protected:
        ~Watched() = default;
    };

    Readiness() = default;
    Readiness(const Readiness&) = delete;
    Readiness& operator=(const Readiness&) = delete;
    virtual ~Readiness() = default;

    /// Watches a socket until it is removed, which has to be done before it is closed. It may be
    /// ready already.
    virtual void add(SocketHandle socket, Interest interest, Watched& watched) = 0;
    /// Watches it for something else. It may have been ready for that before.
    virtual void change(SocketHandle socket, Interest interest, Watched& watched) = 0;
    /// `watched` is not called any more, not even for what is known to be ready already.
    virtual void remove(SocketHandle socket, Watched& watched) = 0;

    /// Serves what is ready until nothing is, or some milliseconds longer where more is to be
    /// expected, but not so long that the windows would have to wait.
    /// May be called again while it runs.
    virtual void dispatch() = 0;
};
