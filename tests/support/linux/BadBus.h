#pragma once

#include "platform/linux/Descriptor.h"
#include "tests/support/TemporaryFolder.h"

#include <string>
#include <thread>

/// Something that listens where a message bus should and does not answer as one.
class BadBus {
public:
    enum class Manner {
        /// Takes connections and says nothing.
        Silent,
        /// Lets the user in, and says nothing from then on.
        SilentAfterLogin,
        /// Answers all that comes with lines that mean nothing.
        Nonsense,
        /// Lets the user in, and answers calls with bytes that are no message.
        NonsenseAfterLogin,
        /// Lets the user in, and answers a call that nobody made.
        OtherAnswer,
        /// Lets the user in, and answers the first call with an error.
        Refusal,
        /// Sends a letter after each piece that comes, and no line end.
        EndlessLine,
        /// Lets nobody in.
        Rejection,
        /// Closes each connection at once.
        Closing,
    };

    explicit BadBus(Manner manner);
    ~BadBus();
    BadBus(const BadBus&) = delete;
    BadBus& operator=(const BadBus&) = delete;

    /// As DBUS_SESSION_BUS_ADDRESS has it.
    [[nodiscard]] std::string address() const;

private:
    void serve();
    /// False where the connection is to be closed.
    [[nodiscard]] bool answer(int connection) const;

    Manner manner;
    TemporaryFolder folder;
    Descriptor listener;
    Descriptor endReader;
    Descriptor endWriter;
    std::thread server;
};
