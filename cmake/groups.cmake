# Sorts the sources of every target into groups of up to eight out of one top folder. Where groups are
# wanted, each is one compilation, which takes about a third of the time; the linter always takes
# them so. What users run is compiled file by file, so a source that forgets an include is found there.
function(form_groups target directory)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        if(IS_ABSOLUTE ${source})
            continue()  # Made by a tool.
        endif()
        get_filename_component(folder ${source} DIRECTORY)
        string(REGEX REPLACE "/.*" "" folder "${folder}")
        list(APPEND in_${folder} ${source})
        list(LENGTH in_${folder} count)
        math(EXPR number "(${count} + 7) / 8")
        # In a file of this name the linter's analyzer takes the included sources for code, where it
        # would take them for headers and hardly look at them.
        set(group UnifiedSource_${folder}${number})
        # Whole, since what is relative would be looked for from the folder of this call.
        set_source_files_properties(${directory}/${source}
            DIRECTORY ${directory} PROPERTIES UNITY_GROUP ${group})
        list(APPEND groups ${group})
    endforeach()
    list(REMOVE_DUPLICATES groups)
    set_target_properties(${target} PROPERTIES
        UNITY_BUILD ${COBWEAVE_SANITIZE}
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
        # The code of tests is compiled more often than it runs. It comes file by file only for the
        # debugger, where one file is changed again and again.
        if(directory STREQUAL "${PROJECT_SOURCE_DIR}/tests" AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
            set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
            # In one string, since CMake leaves out an option that it has seen before.
            target_compile_options(${target} PRIVATE "SHELL:-O0 -U_FORTIFY_SOURCE")
        endif()
    endforeach()
    get_property(folders DIRECTORY ${directory} PROPERTY SUBDIRECTORIES)
    foreach(folder IN LISTS folders)
        form_all_groups(${folder})
    endforeach()
endfunction()
