# What users run is hardened as Debian hardens its own packages, and by the assertions of the standard
# library: code that goes wrong ends instead of being led on. tests/system/hardened reads from the
# built program that it is. The sanitizers see more by themselves, and what is built for the debugger
# is not optimised, without which _FORTIFY_SOURCE does nothing but warn.
if(COBWEAVE_SANITIZE OR NOT CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$")
    return()
endif()

include(CheckCXXCompilerFlag)
add_compile_options(
    -fPIE
    -fstack-protector-strong
    -Wformat-security
    # Whoever packages the program may have set it already.
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
    -D_GLIBCXX_ASSERTIONS)
add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie> -Wl,-z,relro,-z,now)

# Indirect jumps and calls land on a marked instruction only, where the processor looks.
check_cxx_compiler_flag(-fcf-protection=full COBWEAVE_HAS_CF_PROTECTION)
check_cxx_compiler_flag(-mbranch-protection=standard COBWEAVE_HAS_BRANCH_PROTECTION)
if(COBWEAVE_HAS_CF_PROTECTION)
    add_compile_options(-fcf-protection=full)
elseif(COBWEAVE_HAS_BRANCH_PROTECTION)
    add_compile_options(-mbranch-protection=standard)
endif()
set(COBWEAVE_HARDENED ON)
