#pragma once

#include <memory>

/// The messenger client on this machine.
class Client {
public:
    Client() = default;
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    virtual ~Client() = default;

    /// Starts the client at the one place where its setup puts it, and waits for nothing. One that
    /// is not there, or cannot be started, is passed over without a word.
    virtual void start() = 0;
};

[[nodiscard]] std::unique_ptr<Client> makeClient();
