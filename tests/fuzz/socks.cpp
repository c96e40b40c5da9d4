#include "tests/fuzz/MemorySpine.h"
#include "tests/fuzz/fuzz.h"
#include "tests/fuzz/inputs.h"

#include <algorithm>

namespace {

bool isDotted(std::string_view address) {
    return address.size() <= 15 && std::all_of(address.begin(), address.end(), [](char character) {
               return character == '.' || (character >= '0' && character <= '9');
           });
}

}  // namespace

/// The first words of whoever connects, and what comes after them. Nobody is served who has not
/// asked as a client, and what is asked for is an address and a port.
void searches::socks(std::string_view input) {
    MemorySpine spine;
    const std::vector<RecordedRead> reads = readsOf(input);
    spine.request(reads.front().bytes);
    const std::string& first = reads.front().bytes;
    const bool mayAsk = first.starts_with("\x04\x01") || first.starts_with('*');
    if (!mayAsk) demand(spine.host.instances().empty(), "nobody else is counted");
    if (spine.host.instances().empty()) {
        demand(spine.network.sockets.size() == 1, "nobody else is given a socket");
        return;
    }
    for (const RecordedRead& read : reads) {
        if (read.fromClient) {
            spine.client().arrive(read.bytes);
        } else if (spine.server().state == SocketState::Connecting) {
            spine.server().succeedConnecting();
        } else if (spine.server().state == SocketState::Connected) {
            spine.server().arrive(read.bytes);
        }
        if (spine.server().state != SocketState::Connected) {
            demand(spine.server().sent.empty() && spine.client().sent.empty(),
                   "nothing is said before the server is there");
        }
    }
    for (const auto& [address, port] : spine.server().connects) {
        demand(isDotted(address), "only an address in numbers is looked for");
        demand(port >= 0 && port <= 32767, "a port has 15 bits");
    }
}
