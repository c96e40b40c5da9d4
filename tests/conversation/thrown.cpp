#include "tests/conversation/thrown.h"

#include <typeinfo>

namespace {

std::size_t thrownSoFar = 0;

}  // namespace

std::size_t thrown() { return thrownSoFar; }

// The linker makes each throw call the second of these, which calls what would have been called.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" [[noreturn]] void __real___cxa_throw(void* thing, std::type_info* type,
                                                void (*destroy)(void*));
extern "C" [[noreturn]] void __wrap___cxa_throw(void* thing, std::type_info* type,
                                                void (*destroy)(void*));
void __wrap___cxa_throw(void* thing, std::type_info* type, void (*destroy)(void*)) {
    ++thrownSoFar;
    __real___cxa_throw(thing, type, destroy);
}
// NOLINTEND(bugprone-reserved-identifier)
