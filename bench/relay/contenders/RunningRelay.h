#pragma once

#include "bench/relay/contenders/Contender.h"
#include "bench/relay/server/ServerProcess.h"
#include "bench/relay/system/ChildProcess.h"

#include <optional>
#include <string_view>
#include <vector>

/// A contender that is ready to be measured: a fresh process, except for the direct connection. The
/// process ends with this object.
class RunningRelay {
public:
    /// Starts it and waits until it has relayed a line there and back. `settings` are for the
    /// program under test alone. Throws `BenchError` when it does not start, and `PortTaken`.
    RunningRelay(const Contender& contender, const ServerProcess& server,
                 const std::filesystem::path& folder, const Settings& settings);

    /// From the start of the process to the first line relayed.
    [[nodiscard]] double startMilliseconds() const { return startTime; }
    /// False for the direct connection.
    [[nodiscard]] bool hasProcess() const { return process.has_value(); }
    /// The group of its processes. Only where there is one.
    [[nodiscard]] pid_t processId() const { return process.value().id(); }
    /// It changes what its settings say.
    [[nodiscard]] bool rewrites() const { return contender.rewrites; }

    /// The whole way to the server over a socket of `makeClientSocket`. Like the next two it throws
    /// `BenchError` when the relay refuses.
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

/// Sends a line and waits until exactly the same has come back; a `BenchError` when it does not.
void echo(int socket, std::string_view line);
