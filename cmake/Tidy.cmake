# The target `tidy`: clang-tidy over every source below Sources, with the checks of .clang-tidy. A source is checked again
# when it or anything it includes has changed: its object file is then newer than its stamp.

find_program(CLANG_TIDY clang-tidy)
if(NOT CLANG_TIDY)
    add_custom_target(tidy
        COMMAND ${CMAKE_COMMAND} -E echo "clang-tidy is missing"
        COMMAND ${CMAKE_COMMAND} -E false)
    return()
endif()
# Each version finds other things; as with the formatting, one decides.
execute_process(COMMAND ${CLANG_TIDY} --version OUTPUT_VARIABLE tidyVersion)
if(NOT tidyVersion MATCHES "version 14\\.")
    add_custom_target(tidy COMMAND ${CMAKE_COMMAND} -E echo "clang-tidy is not version 14: not run")
    return()
endif()

set(stamps)
get_property(targets DIRECTORY ${PROJECT_SOURCE_DIR}/Sources PROPERTY BUILDSYSTEM_TARGETS)
foreach(target ${targets})
    get_target_property(type ${target} TYPE)
    if(NOT type MATCHES "^(STATIC_LIBRARY|EXECUTABLE)$")
        continue()
    endif()
    get_target_property(sources ${target} SOURCES)
    foreach(source ${sources})
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/Sources)
        cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/Sources OUTPUT_VARIABLE name)
        if(name MATCHES "^\\.\\." OR NOT name MATCHES "\\.cpp$")
            continue()  # generated
        endif()
        set(stamp ${PROJECT_BINARY_DIR}/tidy/${name}.stamp)
        cmake_path(GET stamp PARENT_PATH folder)
        file(MAKE_DIRECTORY ${folder})
        add_custom_command(OUTPUT ${stamp}
            COMMAND ${CLANG_TIDY} -p ${PROJECT_BINARY_DIR} --quiet ${source}
            COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
            DEPENDS ${PROJECT_SOURCE_DIR}/.clang-tidy
                ${PROJECT_BINARY_DIR}/Sources/CMakeFiles/${target}.dir/${name}${CMAKE_CXX_OUTPUT_EXTENSION}
            COMMENT "clang-tidy ${name}"
            VERBATIM)
        list(APPEND stamps ${stamp})
    endforeach()
endforeach()
add_custom_target(tidy DEPENDS ${stamps})
