#include "tests/fuzz/fuzz.h"

#include <utility>

Search searchOf(std::string_view name) {
    constexpr std::pair<std::string_view, Search> all[] = {
        {"filters", searches::filters},   {"frames", searches::frames}, {"movie", searches::movie},
        {"settings", searches::settings}, {"socks", searches::socks},
    };
    for (const auto& [known, search] : all) {
        if (known == name) return search;
    }
    std::fprintf(stderr, "There is no search \"%.*s\".\n", static_cast<int>(name.size()),
                 name.data());
    std::exit(2);
}
