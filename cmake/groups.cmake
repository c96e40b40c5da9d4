# Sorts the sources of every target into groups of one size, as few as hold up to fifty each, or to
# twenty where users build, since the larger the group, the more memory its compilation takes. Where
# groups are wanted, each is one compilation, which takes about a third of the time; the linter always
# takes them so, since most of its time goes to the headers of the libraries. The release is compiled
# file by file where it is tested, so a source that forgets an include is found there.
function(form_groups target directory)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources EXCLUDE REGEX "^/")  # Made by a tool.
    list(LENGTH sources count)
    set(most 50)
    if(COBWEAVE_GROUPS)
        set(most 20)
    endif()
    math(EXPR group_count "(${count} + ${most} - 1) / ${most}")
    set(place 0)
    foreach(source IN LISTS sources)
        math(EXPR number "${place} * ${group_count} / ${count} + 1")
        math(EXPR place "${place} + 1")
        # In a file of this name the linter's analyzer takes the included sources for code, where it
        # would take them for headers and hardly look at them.
        set(group UnifiedSource${number})
        # Whole, since what is relative would be looked for from the folder of this call.
        set_source_files_properties(${directory}/${source}
            DIRECTORY ${directory} PROPERTIES UNITY_GROUP ${group})
        list(APPEND groups ${group})
    endforeach()
    list(REMOVE_DUPLICATES groups)
    set(in_groups OFF)
    if(COBWEAVE_GROUPS OR COBWEAVE_SANITIZE)
        set(in_groups ON)
    endif()
    set_target_properties(${target} PROPERTIES
        UNITY_BUILD ${in_groups}
        UNITY_BUILD_MODE GROUP
        UNITY_BUILD_CODE_BEFORE_INCLUDE "// NOLINTNEXTLINE(bugprone-suspicious-include)")
    if(COBWEAVE_LINT)
        lint(${target} ${groups})
    endif()
endfunction()

# For all targets of a folder and of those in it.
function(form_all_groups directory)
    get_property(targets DIRECTORY ${directory} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        if(NOT type MATCHES "EXECUTABLE|STATIC_LIBRARY|OBJECT_LIBRARY")
            continue()
        endif()
        form_groups(${target} ${directory})
        if(CMAKE_BUILD_TYPE STREQUAL "Debug" OR NOT directory MATCHES "^${PROJECT_SOURCE_DIR}/tests(/|$)")
            continue()
        endif()
        # Tests come file by file only for the debugger, where one file is changed again and again.
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
        # Their code is compiled more often than it runs; that of the support runs in benchmarks.
        if(NOT target STREQUAL "test_support")
            # In one string, since CMake leaves out an option that it has seen before.
            target_compile_options(${target} PRIVATE "SHELL:-O0 -U_FORTIFY_SOURCE"
                # Collecting garbage takes g++ a twelfth of its time; there is hardly any.
                $<$<CXX_COMPILER_ID:GNU>:--param=ggc-min-heapsize=1048576>)
        endif()
    endforeach()
    get_property(folders DIRECTORY ${directory} PROPERTY SUBDIRECTORIES)
    foreach(folder IN LISTS folders)
        form_all_groups(${folder})
    endforeach()
endfunction()
