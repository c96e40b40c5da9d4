# For all of the project's own code. In the presets of developers every warning is an error; whoever
# only builds the program may have a compiler that warns of more. -Wrestrict is left out: g++ 12 sees
# overlaps in std::string's own code that are not there (GCC bug 105651). clang counts signs to
# -Wconversion, g++ does not, and is alone in knowing which names are not ours to give.
add_library(cobweave_warnings INTERFACE)
target_compile_options(cobweave_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wold-style-cast -Woverloaded-virtual
    -Wnon-virtual-dtor -Wcast-align -Wimplicit-fallthrough $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    "$<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion;-Wreserved-identifier>")
