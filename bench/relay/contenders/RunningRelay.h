#pragma once

#include "bench/relay/contenders/Contender.h"
#include "bench/relay/server/ServerProcess.h"

#include <optional>
#include <string_view>
#include <vector>

/// A contender that is ready to be measured: a fresh process, except for the direct connection. The
/// process ends with this object.
class RunningRelay {
public:
    /// Starts it and waits until it has relayed a message there and back.
    RunningRelay(const Contender& which, const ServerProcess& server,
                 const std::filesystem::path& folder);

    /// From the start of the process to the first message relayed.
    [[nodiscard]] double startMilliseconds() const { return startTime; }
    [[nodiscard]] bool hasProcess() const { return process.has_value(); }
    [[nodiscard]] pid_t processId() const { return process.value().id(); }

    /// The whole way to the server over a socket of `makeClientSocket`.
    void open(int socket) const;
    /// New connections, all the way to the server.
    [[nodiscard]] Descriptor open() const;
    [[nodiscard]] std::vector<Descriptor> openMany(std::size_t count) const;

    /// Whether it runs and what it wrote last, to explain a failure with.
    [[nodiscard]] std::string describeState() const;

private:
    [[nodiscard]] Port choosePort() const;
    void awaitFirstMessage();

    const Contender& contender;
    Port serverPort;
    Port port;
    std::optional<ChildProcess> process;
    double startTime = 0;
};

/// Sends `message` and waits until exactly the same has come back.
void exchange(int socket, std::string_view message);
