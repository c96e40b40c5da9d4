# Makes each suite of a program of tests one test of ctest: a process for each single test would take
# longer to start than to run. The suites are asked for when ctest begins, and again when the program
# is newer than their list.
#
# FILE is the program's, where another build makes it, for the machine that the tests run on.
#
#   add_suites(PROGRAM [FILE FILE] [SUFFIX TEXT] [PROPERTIES NAME VALUE...])
function(add_suites target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "FILE;SUFFIX" "PROPERTIES")
    set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}${arg_SUFFIX}.cmake)
    set(emulator)
    if(NOT arg_FILE)
        set(arg_FILE $<TARGET_FILE:${target}>)
        set(emulator ${CMAKE_CROSSCOMPILING_EMULATOR})
    endif()
    file(GENERATE OUTPUT ${list} CONTENT "\
set(target ${target})
set(program [==[${arg_FILE}]==])
set(emulator ${emulator})
set(leftOut ${COBWEAVE_LEFT_OUT})
set(suffix [==[${arg_SUFFIX}]==])
set(properties [==[${arg_PROPERTIES}]==])
include([==[${PROJECT_SOURCE_DIR}/cmake/listSuites.cmake]==])
")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${list})
endfunction()
