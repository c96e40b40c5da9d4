#include "tests/fuzz/fuzz.h"
#include "tests/support/readFile.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <vector>

/// Gives one search every file of the folders that are named: what a search has found stays fixed.
int main(int argc, char** argv) {
    prepareFuzz(argc, argv);
    for (int at = 1; at < argc; ++at) {
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(argv[at]))
            files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        for (const std::filesystem::path& file : files) {
            // Standing there when the process ends, it names the culprit.
            std::printf("%s\n", file.c_str());
            std::fflush(stdout);
            fuzz(readFile(file));
        }
        demand(!files.empty(), "there is something to replay");
    }
    return argc > 1 ? 0 : 2;
}
