#include "stores/SettingsStore.h"

#include "tests/fuzz/fuzz.h"
#include "tests/fuzz/inputs.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <fstream>

namespace {

constexpr std::size_t mostBytes = std::size_t{32} << 20U;

void write(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace

/// Any file in the place of the settings, and any log beside it: the store keeps what it is given
/// while the program runs, reports trouble once a kind, and can be opened again.
void searches::settings(std::string_view input) {
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.path() / "settings.db";
    const std::size_t end = std::min(input.find(logMark), input.size());
    write(path, input.substr(0, end));
    if (end < input.size()) {
        write(withEnding(path, "-wal"), input.substr(end + logMark.size()));
    }
    for (const auto* const value : {"Busy", "Away"}) {
        int reported = 0;
        SettingsStore store(path, [&](std::string_view) { ++reported; });
        demand(store.ReadSetting("Options", "timestamp").size() <= mostBytes,
               "what a file makes SQLite compute is bounded");
        store.WriteSetting("Options", "initialStatus", value);
        store.WriteSetting(SettingsStore::lastWords, "bob@example.com", value);
        demand(store.ReadSetting("Options", "initialStatus") == value, "what is written is kept");
        demand(reported <= 4, "each kind of trouble is reported once");
    }
}
