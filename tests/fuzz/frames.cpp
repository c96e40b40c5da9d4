#include "tests/fuzz/MemorySpine.h"
#include "tests/fuzz/fuzz.h"
#include "tests/fuzz/inputs.h"

namespace {

/// Whether what was sent is pieces of what has come, in its order; but for messages, of which a
/// part may be cut off.
bool isOf(const std::vector<std::string>& sent, std::string_view come) {
    for (const std::string& chunk : sent) {
        if (chunk.starts_with("MSG")) continue;
        const std::size_t found = come.find(chunk);
        if (found == std::string_view::npos) return false;
        come.remove_prefix(found + chunk.size());
    }
    return true;
}

}  // namespace

/// Foreign frames and direct-connection headers of both sides, with everything else switched off:
/// some of what a side sends vanishes, and the rest gets to the other side as it is.
void searches::frames(std::string_view input) {
    MemorySpine spine;
    spine.settings.WriteSetting("Options", "constants", "False");
    spine.relay();
    spine.client().arrive("CHG 6 NLN 0\r\n");
    spine.server().sent.clear();
    std::string fromClient;
    std::string fromServer;
    for (const RecordedRead& read : readsOf(input)) {
        (read.fromClient ? fromClient : fromServer) += read.bytes;
        (read.fromClient ? spine.client() : spine.server()).arrive(read.bytes);
    }
    demand(isOf(spine.server().sent, fromClient), "the server gets what the client has sent");
    demand(isOf(spine.client().sent, fromServer), "the client gets what the server has sent");
    spine.client().lose();
    spine.watch().pass();
    demand(spine.host.instances().empty(), "the connection ends with its client");
}
