#include "tests/conversation/thrown.h"

#include <typeinfo>

namespace {

std::size_t thrownSoFar = 0;

}  // namespace

std::size_t thrown() { return thrownSoFar; }

// The linker makes each throw call the second of these, which calls what would have been called.
extern "C" [[noreturn]] void realThrow(void* thing, std::type_info* type,
                                       void (*destroy)(void*)) asm("__real___cxa_throw");
extern "C" [[noreturn]] void countedThrow(void* thing, std::type_info* type,
                                          void (*destroy)(void*)) asm("__wrap___cxa_throw");
void countedThrow(void* thing, std::type_info* type, void (*destroy)(void*)) {
    ++thrownSoFar;
    realThrow(thing, type, destroy);
}
