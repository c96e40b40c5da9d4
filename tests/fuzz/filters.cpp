#include "tests/fuzz/MemorySpine.h"
#include "tests/fuzz/fuzz.h"
#include "tests/fuzz/inputs.h"

#include <algorithm>

namespace {

/// Everything that can be switched on is.
void switchAllOn(Spine& spine) {
    for (const auto* const key :
         {"constants", "preventtypo", "useristyping", "timestamp", "lastthing", "alertopenwindow",
          "alertjoinwindow", "alertclosewindow", "alertoffline"}) {
        spine.settings.WriteSetting("Options", key, "True");
    }
    spine.settings.WriteSetting("Options", "initialStatus", "Be Right Back");
    spine.facilities.player.title = "1. " + std::string(2000, 's') + " - Winamp";
    spine.host.values.rancolorOn = true;
    spine.host.values.winampOn = true;
}

/// What may be added to what was sent: an expansion, percent-coded, or the last words of a contact.
constexpr std::size_t mostAdded = std::size_t{3} * 32767 + 65536 + 2000;

}  // namespace

/// A conversation with all options on: what leaves is bounded by what has come.
void searches::filters(std::string_view input) {
    MemorySpine spine;
    switchAllOn(spine);
    spine.relay();
    // An odd length stands for a client with the add-on.
    spine.facilities.registry.hasAddOn = input.size() % 2 == 1;
    std::size_t come = 0;
    try {
        for (const RecordedRead& read : readsOf(input)) {
            come += read.bytes.size();
            for (FakeWinsock* const socket : {&spine.client(), &spine.server()})
                socket->sent.clear();
            spine.windows.toasts.clear();
            spine.windows.logged.clear();
            (read.fromClient ? spine.client() : spine.server()).arrive(read.bytes);
            const std::size_t most = 3 * come + mostAdded;
            for (const auto* const texts : {&spine.client().sent, &spine.server().sent,
                                            &spine.windows.toasts, &spine.windows.logged}) {
                demand(texts->size() <= 4, "one read makes few messages");
                demand(sizeOf(*texts) <= most, "what leaves is bounded by what has come");
            }
            demand(spine.host.values.nickname.size() <= come, "a nick name is no longer than sent");
        }
    } catch (const ProcessEnded&) {  // The user has asked for it.
    }
}
