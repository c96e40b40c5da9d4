#include "tests/fuzz/inputs.h"

#include "tests/movies/worstCases.h"
#include "tests/stores/Database.h"
#include "tests/support/Spine.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/readFile.h"

#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

/// The inputs of one search, numbered.
class Seeds {
public:
    explicit Seeds(fs::path folder) : folder(std::move(folder)) {
        fs::create_directories(this->folder);
    }
    void add(std::string_view input) {
        std::ofstream(folder / std::to_string(++count), std::ios::binary) << input;
    }

private:
    fs::path folder;
    int count = 0;
};

std::string inFrame(const std::string& payload) {
    return std::string("*\x02\x11\x22", 4) + static_cast<char>(payload.size() / 256) +
           static_cast<char>(payload.size() % 256) + payload;
}

/// What real clients and servers have said: whole connections, and each read for itself.
void addRecording(const std::vector<RecordedRead>& reads, Seeds& filters, Seeds& frames,
                  Seeds& socks) {
    std::string all;
    std::string framed;
    for (const RecordedRead& read : reads) {
        filters.add(marked(read));
        all += marked(read);
        framed += marked({read.fromClient, inFrame(read.bytes) + read.bytes});
    }
    filters.add(all);
    frames.add(framed);
    socks.add(Spine::socksRequest + std::string(serverMark) + all);
    socks.add(inFrame("frame") + Spine::socksRequest);
}

/// The file as another program has it, and the log beside it.
std::string storeAfter(const std::vector<std::string>& statements, bool leavesLog) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "settings.db";
    {
        const Database database(path);
        if (leavesLog) database.leaveLog();
        database.makeTable();
        database.set("timestamp", "True");
        database.set("bob@example.com", "first words", "Cobwaeve", SettingsStore::lastWords);
        for (const std::string& statement : statements)
            database.run(statement);
    }
    return leavesLog ? readFile(path) + std::string(logMark) + readFile(path.string() + "-wal")
                     : readFile(path);
}

}  // namespace

/// Writes what the searches begin with into the folder that is named, a folder for each search.
int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const fs::path folder = argv[1];
    Seeds filters(folder / "filters");
    Seeds frames(folder / "frames");
    Seeds socks(folder / "socks");
    for (const std::string& name : recordingNames()) {
        addRecording(readRecording(name), filters, frames, socks);
    }
    // So that none is longer than what a search tries.
    constexpr unsigned divisor = 40;
    Seeds movies(folder / "movie");
    for (const WorstCase& worst : worstCases(divisor))
        movies.add(worst.file);
    Seeds settings(folder / "settings");
    settings.add("");
    settings.add("no database");
    settings.add(storeAfter({}, false));
    settings.add(storeAfter({}, true));
    settings.add(storeAfter(
        {"ALTER TABLE settings RENAME TO others", "CREATE VIEW settings AS SELECT * FROM others"},
        false));
    settings.add(storeAfter({"CREATE TRIGGER again AFTER INSERT ON settings BEGIN UPDATE settings "
                             "SET value = value || value; END"},
                            false));
    return 0;
}
