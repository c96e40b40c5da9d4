#include "proxy/MSNProxy.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/ProgramWindows.h"
#include "desktop/mdlFunctions.h"
#include "proxy/filters.h"
#include "stores/SettingsStore.h"

#include <optional>
#include <utility>

using namespace std::string_view_literals;

namespace {

constexpr std::chrono::milliseconds watchInterval{100};

/// The reply to a SOCKS request begins with these; the port and address follow. The first byte is
/// 4, where SOCKS 4 has 0: Messenger and `nc -X 4` take it, curl and proxychains do not.
constexpr std::string_view requestGranted = "\x04\x5A";
constexpr std::string_view connectRequest = "\x04\x01";

/// A header of direct connections of another protocol begins so.
constexpr std::string_view directConnectHead = "ODC2";

/// The head of a foreign frame: the marker, a channel, two bytes of sequence, two of length.
constexpr std::int32_t frameHead = 6;

/// Counts an event as running for as long as this object lives.
class RunningEvent {
public:
    explicit RunningEvent(int& count) : count(count) { ++count; }
    ~RunningEvent() { --count; }
    RunningEvent(const RunningEvent&) = delete;
    RunningEvent& operator=(const RunningEvent&) = delete;

private:
    int& count;
};

/// Empties a buffer at the end, however the event ends: the next chunk is treated afresh.
class SpentBuffer {
public:
    explicit SpentBuffer(std::string& buffer) : buffer(buffer) {}
    /// Gives the memory back too, which an assignment would not: a thousand quiet connections are
    /// to cost little.
    ~SpentBuffer() { std::string().swap(buffer); }
    SpentBuffer(const SpentBuffer&) = delete;
    SpentBuffer& operator=(const SpentBuffer&) = delete;

private:
    std::string& buffer;
};

/// Two characters of a frame or request as the number that they are; nothing above 32,767.
std::optional<std::int16_t> twoByteNumber(std::string_view bytes) {
    std::string withNul(1, '\0');
    withNul += bytes;
    return mdlFunctions::Base256ToInteger(withNul);
}

/// Nothing where the buffer ends within the address.
std::optional<std::string> dottedAddress(std::string_view buffer) {
    std::string address;
    for (std::size_t position = 5; position <= 8; ++position) {
        const auto part = code(buffer, position);
        if (!part) return std::nullopt;
        if (position > 5) address += '.';
        address += std::to_string(*part);
    }
    return address;
}

/// A buffer without a second character may be the head of a frame, whatever its first one is.
bool beginsLikeForeignFrame(std::string_view buffer) {
    const auto channel = code(buffer, 2);
    return !channel || (buffer.starts_with('*') && *channel <= 5);
}

}  // namespace

MSNProxy::MSNProxy(ProxyHost& host)
    : Conversation(host.services),
      host(host),
      Timer1(host.loop.makeTimer()),
      Winsock1{host.network.makeWinsock(), host.network.makeWinsock()},
      queues{{{host.queues, *Winsock1[serverSide]}, {host.queues, *Winsock1[clientSide]}}} {
    Timer1->tick = [this] { Timer1_Timer(); };
    listenTo<clientSide>(*Winsock1[clientSide]);
    listenTo<serverSide>(*Winsock1[serverSide]);
}

/// The number of the side is in the types of the listeners, so that each is no more than a
/// pointer.
template <int Index>
void MSNProxy::listenTo(Winsock& socket) {
    socket.Connected = [this] { Winsock1_Connect(Index); };
    socket.DataArrival = [this](std::size_t) { Winsock1_DataArrival(Index); };
    socket.SendProgress = [this](std::size_t, std::size_t bytesRemaining) {
        Winsock1_SendProgress(Index, bytesRemaining);
    };
    socket.ConnectionLost = [this] { Winsock1_ConnectionLost(Index); };
}

bool MSNProxy::isClient(std::string_view firstRead) {
    Stream stream;
    // Fewer bytes than the head of a frame are kept until more arrive, and are still a request.
    (void)takesFrames(stream, firstRead);
    return firstRead.starts_with(connectRequest);
}

void MSNProxy::Connect(RequestId requestID) {
    closeSockets();
    Timer1->wake();
    relaying = false;
    (void)Winsock1[clientSide]->Accept(requestID);
}

std::string MSNProxy::IntegerToBase256(std::int32_t ThePort) {
    const auto value = need(checked<std::uint16_t>(ThePort));
    return {static_cast<char>(value / 256), static_cast<char>(value % 256)};
}

void MSNProxy::ChangeNick(std::string_view strcommand) {
    const RunningEvent running(runningEvents);
    const ProcessValues& values = services.values;
    std::string command = connection.protocolVersion == "9"
                              ? "REA " + values.tranID + " " + values.email + " "
                              : "PRP " + values.tranID + " MFN ";
    command.append(strcommand).append(lineEnd);
    need(Winsock1[serverSide]->SendData(command), "the server is gone");
}

void MSNProxy::ChangeStatus(std::string_view strstatus) {
    const RunningEvent running(runningEvents);
    std::string command = "CHG " + services.values.tranID + " ";
    command.append(strstatus).append(" ").append(services.values.statusPostfix).append(lineEnd);
    need(Winsock1[serverSide]->SendData(command), "the server is gone");
}

bool MSNProxy::sendToClient(std::string_view bytes) {
    return Winsock1[clientSide]->SendData(bytes);
}

void MSNProxy::Unload() {
    Timer1->disable();
    closeSockets();
}

void MSNProxy::closeSockets() {
    for (int Index = 0; Index < sides; ++Index) {
        Winsock1[Index]->Close();
        queues[Index].nowWaits(0);
    }
}

void MSNProxy::Winsock1_Connect(int Index) {
    const RunningEvent running(runningEvents);
    if (Index != serverSide) return;
    relaying = true;
    // First: whatever becomes of the reply, the connection is watched. A loss to come wakes the
    // watch, so that only one that was before makes it tick.
    if (Winsock1[clientSide]->State() == SocketState::Connected) {
        Timer1->enableAtRest(watchInterval);
    } else {
        Timer1->enable(watchInterval);
    }
    (void)Winsock1[clientSide]->SendData(std::string(requestGranted) + socksReplyTail);
}

void MSNProxy::Winsock1_ConnectionLost(int Index) {
    // In the middle of another event of the instance the end has to wait until that has returned.
    const bool isAlone = runningEvents == 0;
    const RunningEvent running(runningEvents);
    if (Index == serverSide && !relaying) reportUnreachable();
    if (isAlone && isOver(Index)) {
        FreePort();
    } else {
        Timer1->wake();
    }
}

/// Whether the instance can end now that a side is lost, and not only at the next tick: where bytes
/// are under way they still get until then.
bool MSNProxy::isOver(int lost) const {
    if (relaying) return Winsock1[1 - lost]->IsQuiet();
    return Winsock1[clientSide]->State() != SocketState::Connected &&
           Winsock1[serverSide]->State() != SocketState::Connecting;
}

/// Names the server by the bytes of the request, whose port may be one that no connection is tried
/// to.
void MSNProxy::reportUnreachable() {
    const auto high = code(socksReplyTail, 1);
    const auto low = code(socksReplyTail, 2);
    const auto address = dottedAddress(std::string(connectRequest) + socksReplyTail);
    if (!high || !low || !address) return;
    unreachable(*address + ", port " + std::to_string(*high * 256 + *low));
}

void MSNProxy::Timer1_Timer() {
    const RunningEvent running(runningEvents);
    const bool bothConnected = Winsock1[clientSide]->State() == SocketState::Connected &&
                               Winsock1[serverSide]->State() == SocketState::Connected;
    if (bothConnected) {
        Timer1->rest();
    } else {
        FreePort();
    }
}

void MSNProxy::Winsock1_SendProgress(int Index, std::size_t bytesRemaining) {
    Label1 = bytesRemaining;
    queues[Index].nowWaits(bytesRemaining);
}

void MSNProxy::Winsock1_DataArrival(int Index) {
    const RunningEvent running(runningEvents);
    Stream& stream = streams[Index];
    if (stream.blocked) return;
    std::string& buffer = stream.receiveBuffer;
    const std::string_view arrived = Winsock1[Index]->GetData();
    if (buffer.empty() && !isForeign(arrived)) {
        relay(Index, arrived);
        return;
    }
    buffer += arrived;
    if (takesForeignFrames(stream)) return;
    const SpentBuffer spent(buffer);
    if (!takesSocksRequest(buffer) && !dropsDirectConnect(Index, buffer)) {
        relay(Index, buffer);
    }
}

/// Whether a chunk may be anything but a command. A chunk that is none is sent on from where it was
/// received.
bool MSNProxy::isForeign(std::string_view chunk) {
    return beginsLikeForeignFrame(chunk) || chunk.starts_with(connectRequest) ||
           chunk.starts_with(directConnectHead);
}

/// Takes whole frames of another protocol off the head of the buffer; they are sent nowhere. True
/// when what is left is kept until more of it arrives.
bool MSNProxy::takesForeignFrames(Stream& stream) {
    std::string_view rest = stream.receiveBuffer;
    const bool ends = takesFrames(stream, rest);
    // Erasing frame by frame would cost the square of what one read can hold.
    stream.receiveBuffer.erase(0, stream.receiveBuffer.size() - rest.size());
    return ends;
}

/// Does the same to `rest`, a view of the buffer.
bool MSNProxy::takesFrames(Stream& stream, std::string_view& rest) {
    while (beginsLikeForeignFrame(rest)) {
        if (!stream.frameWaiting) {
            if (const auto payload = twoByteNumber(characters(rest, 5, 6))) {
                stream.frameLength = *payload + frameHead;
            }
            if (stream.frameLength == 0) {
                stream.blocked = true;
                rest = {};
                return true;
            }
        }
        const auto length = static_cast<std::size_t>(stream.frameLength);
        if (length > rest.size()) {
            stream.frameWaiting = true;
            return true;
        }
        rest.remove_prefix(length);
        stream.frameLength = 0;
        stream.frameWaiting = false;
        if (rest.size() < frameHead) return true;
    }
    return false;
}

/// Opens the server side when the client asks for it. The answer is sent when that has connected.
bool MSNProxy::takesSocksRequest(std::string_view buffer) {
    if (!buffer.starts_with(connectRequest)) return false;
    if (const auto port = twoByteNumber(characters(buffer, 3, 4))) destinationPort = *port;
    if (auto address = dottedAddress(buffer)) destinationAddress = *std::move(address);
    socksReplyTail = characters(buffer, 3, 8);
    Winsock& server = *Winsock1[serverSide];
    const bool isFirst = server.State() == SocketState::Closed;
    const bool begun = server.Connect(destinationAddress, destinationPort);
    if (isFirst && !begun) reportUnreachable();
    return true;
}

/// True for a direct-connection header of the same foreign protocol while much waits to be sent.
bool MSNProxy::dropsDirectConnect(int Index, const std::string& buffer) {
    if (!buffer.starts_with(directConnectHead)) return false;
    if (Index == serverSide) {
        isDirectConnectNamed = !removeAll(characters(buffer, 45, 60), "\0"sv).empty();
    }
    // The codes give the loop a turn, in which the buffer may change: the bytes are those from
    // before it, the codes those from after it.
    const std::string bytes(characters(buffer, 29, 30));
    const bool nuls = bytes == mdlFunctions::CodesToText("0 0", [this] { host.loop.turn(); });
    const auto first = code(buffer, 31);
    const auto second = code(buffer, 32);
    const bool frame = !second || (nuls && *first < 9 && *second != 0);
    return frame && Index == clientSide && isDirectConnectNamed && (!Label1 || *Label1 > 30000);
}

void MSNProxy::relay(int Index, std::string_view chunk) {
    const SettingsStore::OneLook look(services.settings);
    std::string rewritten = std::move(host.spare);
    const std::string_view result = Index == clientSide
                                        ? filterClientChunk(chunk, rewritten, *this)
                                        : filterServerChunk(chunk, rewritten, *this);
    // A side that is gone ends the connection by its own event.
    (void)Winsock1[1 - Index]->SendData(result);
    std::string caption =
        services.values.loggedin ? std::string("Cobweave") : std::string(characters(result, 1, 3));
    services.windows.changetraycaption(caption);
    host.spare = std::move(rewritten);
}
