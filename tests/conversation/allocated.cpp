#include "tests/conversation/allocated.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t allocatedSoFar = 0;

}  // namespace

std::size_t allocated() { return allocatedSoFar; }

// The library's other forms call these; the sanitizers' do not, and have a pair each but for the
// one that does not throw.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    ++allocatedSoFar;
    return std::malloc(size);
}
void* operator new(std::size_t size) {
    void* const memory = operator new(size, std::nothrow);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
