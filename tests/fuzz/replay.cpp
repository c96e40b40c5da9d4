#include "tests/fuzz/fuzz.h"
#include "tests/support/readFile.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <vector>

/// Gives the search that is named first every file of the folders that are named after it: what a
/// search has found stays fixed.
int main(int argc, char** argv) {
    const Search search = searchOf(argc > 1 ? argv[1] : "");
    for (int at = 2; at < argc; ++at) {
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(argv[at]))
            files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        for (const std::filesystem::path& file : files) {
            // Standing there when the process ends, it names the culprit.
            std::printf("%s\n", file.c_str());
            std::fflush(stdout);
            search(readFile(file));
        }
        demand(!files.empty(), "there is something to replay");
    }
    return argc > 2 ? 0 : 2;
}
