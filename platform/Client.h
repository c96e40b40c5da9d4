#pragma once

#include <memory>

/// The messenger client on this machine.
class Client {
public:
    Client() = default;
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    virtual ~Client() = default;

    /// Starts the client from the folder that its setup puts it in, and does not wait for it. When
    /// it is not there, or cannot be started, nothing happens.
    virtual void start() = 0;
};

/// The client of this user.
[[nodiscard]] std::unique_ptr<Client> makeClient();
