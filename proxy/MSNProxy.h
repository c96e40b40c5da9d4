#pragma once

#include "base/Event.h"
#include "conversation/Conversation.h"
#include "platform/EventLoop.h"
#include "platform/Winsock.h"
#include "proxy/SendQueues.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// What a connection asks of the program around it.
struct ProxyHost {
    Services& services;
    Network& network;
    EventLoop& loop;
    SendQueues& queues;
    /// The memory of the last chunk that was rewritten, for the next one.
    std::string spare;
};

/// One connection of the client: the pair of sockets, how the server side is opened, and what
/// happens to each chunk that passes. A chunk is what one read delivers; it is taken for one
/// command, looked at by its first three characters and sent on at once in one piece.
class MSNProxy final : private Conversation {
public:
    /// The server that the client has named, "10.1.2.3, port 1863", could not be reached.
    Event<std::string_view> unreachable;
    /// The connection is over, and so is the use of this instance.
    Event<> FreePort;

    /// An instance that is not connected yet. What `host` names outlives it.
    explicit MSNProxy(ProxyHost& host);

    /// Whether somebody who says this first, in one read, is a client: it asks for a connection,
    /// ahead of which whole foreign frames may stand.
    [[nodiscard]] static bool isClient(std::string_view firstRead);

    /// Takes over the requested connection as the client side, if it is still there.
    void Connect(RequestId requestID);
    /// Gives the instance its number.
    void SetFormID(std::int16_t FormIDStart) { connection.formID = FormIDStart; }

    /// `ThePort` as two characters, most significant first. Abandons the step below 0 and above
    /// 65,535. The program itself does not call it: it completes the interface.
    [[nodiscard]] static std::string IntegerToBase256(std::int32_t ThePort);

    /// Asks the server for a nick name, percent-encoded, in the client's dialect. Abandons the step
    /// when the server is gone.
    void ChangeNick(std::string_view strcommand);
    /// Asks the server for a status, by its code. Abandons the step when the server is gone. The
    /// program itself does not call it: it completes the interface.
    void ChangeStatus(std::string_view strstatus);

    /// Ends the connection: the sockets close at once and nothing ticks any more.
    void Unload();
    /// An event of this instance is running, so it must not be destroyed yet.
    [[nodiscard]] bool isInEvent() const { return runningEvents > 0; }

    /// What is known of the connection.
    [[nodiscard]] const ConnectionRecord& record() const { return connection; }

private:
    static constexpr int clientSide = 0;
    static constexpr int serverSide = 1;
    static constexpr int sides = 2;

    /// What is kept for the stream of one side.
    struct Stream {
        /// What has arrived and is not disposed of; empty between events, but for an unfinished
        /// foreign frame.
        std::string receiveBuffer;
        /// The whole length of the foreign frame that is being received, while `frameWaiting`.
        std::int32_t frameLength = 0;
        bool frameWaiting = false;
        /// A foreign frame of an impossible length has arrived. Nothing gets past it.
        bool blocked = false;
    };

    template <int Index>
    void listenTo(Winsock& socket);
    void Winsock1_Connect(int Index);
    void Winsock1_DataArrival(int Index);
    void Winsock1_SendProgress(int Index, std::size_t bytesRemaining);
    void Winsock1_ConnectionLost(int Index);
    void Timer1_Timer();

    [[nodiscard]] static bool isForeign(std::string_view chunk);
    [[nodiscard]] bool isOver(int lost) const;
    void reportUnreachable();

    [[nodiscard]] static bool takesForeignFrames(Stream& stream);
    [[nodiscard]] static bool takesFrames(Stream& stream, std::string_view& rest);
    [[nodiscard]] bool takesSocksRequest(std::string_view buffer);
    [[nodiscard]] bool dropsDirectConnect(int Index, const std::string& buffer);
    void relay(int Index, std::string_view chunk);

    void closeSockets();

    [[nodiscard]] bool sendToClient(std::string_view bytes) override;

    ProxyHost& host;
    std::array<Stream, sides> streams;
    std::int32_t destinationPort = 0;
    std::string destinationAddress;
    /// Port and address as the client sent them, for the reply.
    std::string socksReplyTail;
    /// How many bytes wait to be sent, as last reported by either socket; nothing before.
    std::optional<std::size_t> Label1;
    /// The server has sent a header of a direct connection with a name in it.
    bool isDirectConnectNamed = false;
    /// The server side has been connected.
    bool relaying = false;
    int runningEvents = 0;
    std::unique_ptr<Timer> Timer1;
    std::array<std::unique_ptr<Winsock>, sides> Winsock1;
    /// What waits to be sent to each side.
    std::array<SendQueues::Direction, sides> queues;
};
