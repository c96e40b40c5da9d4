#pragma once

#include "bench/relay/server/TrafficServer.h"
#include "bench/relay/system/socketTools.h"

#include <cstdint>
#include <string_view>

#include <sys/types.h>

/// The traffic server in a process of its own, on the same core as all others. Ends with this
/// object.
class ServerProcess {
public:
    /// Starts it. Throws `BenchError` when the system refuses that.
    ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;
    ~ServerProcess();

    /// Where it listens on loopback.
    [[nodiscard]] Port port() const { return serverPort; }
    /// How many bytes its sources have sent since it started.
    [[nodiscard]] std::int64_t sourceBytes() const { return facts->sourceBytes; }
    /// What reached it last of a talk, as the relay delivered it. Valid until the next turn.
    [[nodiscard]] std::string_view lastRequest() const {
        return {facts->request.data(), facts->requestSize};
    }

    /// Closes the connections that the server does not read from.
    void releaseHeld() const;

    /// Waits until all connections of a finished measurement are gone, so that their end does not
    /// fall into the next one. Throws `BenchError` when they are still there after five seconds.
    void waitUntilIdle() const;

private:
    ServerFacts* facts;
    Port serverPort = 0;
    pid_t process = -1;
};
