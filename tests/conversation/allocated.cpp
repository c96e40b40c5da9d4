#include "tests/conversation/allocated.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t allocatedSoFar = 0;

}  // namespace

std::size_t allocated() { return allocatedSoFar; }

// All other forms of these two call them.
void* operator new(std::size_t size) {
    ++allocatedSoFar;
    void* const memory = std::malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
