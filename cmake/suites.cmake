# Makes each suite of a program of tests one test of ctest: a process for each single test would take
# longer to start than to run. The suites are asked for when ctest begins, and again when the program
# is newer than their list.
#
#   add_suites(PROGRAM [SUFFIX TEXT] [PROPERTIES NAME VALUE...])
function(add_suites target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "SUFFIX" "PROPERTIES")
    get_target_property(binary_dir ${target} BINARY_DIR)
    set(list ${binary_dir}/${target}${arg_SUFFIX}.cmake)
    file(GENERATE OUTPUT ${list} CONTENT "\
set(target ${target})
set(program [==[$<TARGET_FILE:${target}>]==])
set(emulator ${CMAKE_CROSSCOMPILING_EMULATOR})
set(leftOut ${COBWEAVE_LEFT_OUT})
set(suffix [==[${arg_SUFFIX}]==])
set(properties [==[${arg_PROPERTIES}]==])
include([==[${PROJECT_SOURCE_DIR}/cmake/listSuites.cmake]==])
")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${list})
endfunction()
