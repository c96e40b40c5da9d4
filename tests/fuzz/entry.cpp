#include "tests/fuzz/fuzz.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Search search = [] {
        // The arguments are libFuzzer's.
        const char* const name = std::getenv("COBWEAVE_SEARCH");
        return searchOf(name != nullptr ? name : "");
    }();
    search({reinterpret_cast<const char*>(data), size});
    return 0;
}
