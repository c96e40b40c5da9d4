# The target "lint" runs clang-tidy on all groups of sources (cmake/groups.cmake). A group is looked at
# again when a file that it includes has changed.
add_custom_target(lint)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/lint)

function(lint target)
    get_target_property(source_dir ${target} SOURCE_DIR)
    get_target_property(binary_dir ${target} BINARY_DIR)
    # What is no part of the program has a shorter list of checks.
    set(checks ${PROJECT_SOURCE_DIR}/.clang-tidy)
    if(source_dir MATCHES "^${PROJECT_SOURCE_DIR}/(tests|bench)(/|$)")
        set(checks ${PROJECT_SOURCE_DIR}/tests/.clang-tidy)
    endif()
    set(script ${PROJECT_SOURCE_DIR}/tests/style/lint)
    foreach(group IN LISTS ARGN)
        set(stamp ${PROJECT_BINARY_DIR}/lint/${target}_${group})
        add_custom_command(
            OUTPUT ${stamp}
            COMMAND ${script} ${PROJECT_BINARY_DIR} ${checks}
                ${binary_dir}/CMakeFiles/${target}.dir/Unity/unity_${group}_cxx.cxx ${stamp}
            DEPENDS ${script} ${checks} ${PROJECT_SOURCE_DIR}/.clang-tidy
            DEPFILE ${stamp}.d
            COMMENT "Linting ${target}, ${group}"
            VERBATIM)
        list(APPEND stamps ${stamp})
    endforeach()
    add_custom_target(lint_${target} DEPENDS ${stamps})
    add_dependencies(lint lint_${target})
endfunction()
