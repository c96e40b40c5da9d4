#pragma once

#include "bench/relay/server/TrafficServer.h"

#include <cstdint>

#include <sys/types.h>

/// The traffic server in a process of its own, on the same core as all others. Ends with this
/// object.
class ServerProcess {
public:
    ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;
    ~ServerProcess();

    [[nodiscard]] Port port() const { return serverPort; }
    [[nodiscard]] std::int64_t sourceBytes() const { return counters->sourceBytes; }

    /// Closes the connections that the server does not read from.
    void releaseHeld() const;

    /// Waits until all connections of a finished measurement are gone, so that their end does not
    /// fall into the next one.
    void waitUntilIdle() const;

private:
    ServerCounters* counters;
    Port serverPort = 0;
    pid_t process = -1;
};
