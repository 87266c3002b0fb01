# A room is one folder under Sources and one library target; its tests are one program of the folder of the
# same path under Tests. Files are found by name, so adding a source needs no edit here.

find_package(PkgConfig REQUIRED)
find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(gull_options INTERFACE)
# No fused multiply-add: burial, sounds and textures must come out the same on every processor.
target_compile_options(gull_options INTERFACE
    -ffp-contract=off -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# GCC 12 falsely reports overlapping copies in std::string (GCC bug 105651).
target_compile_options(gull_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
target_include_directories(gull_options INTERFACE ${PROJECT_SOURCE_DIR}/Sources)
if(NOT GULL_SANITIZE)
    include(${CMAKE_CURRENT_LIST_DIR}/Hardening.cmake)
else()
    # A finding ends the program, so that no test can miss it.
    set(sanitizers -fsanitize=${GULL_SANITIZE} -fno-sanitize-recover=all)
    target_compile_options(gull_options INTERFACE ${sanitizers} -fno-omit-frame-pointer)
    target_link_options(gull_options INTERFACE ${sanitizers})
    # Lists the libraries' leaks, so that one of ours stands out.
    set(GULL_TEST_ENVIRONMENT "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/Tests/Sanitizers/leaks.txt:print_suppressions=0")
endif()
if(GULL_MAP_PATHS)
    target_compile_options(gull_options INTERFACE "-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=")
endif()
if(GULL_COVERAGE)
    target_compile_options(gull_options INTERFACE --coverage)
    target_link_options(gull_options INTERFACE --coverage)
    add_custom_target(coverage-report
        COMMAND gcovr --root ${PROJECT_SOURCE_DIR} --filter Sources/ --exclude-throw-branches --print-summary
            --html-details ${PROJECT_BINARY_DIR}/coverage.html ${PROJECT_BINARY_DIR}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)
endif()
if(GULL_FUZZERS)
    target_compile_options(gull_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# gull_package(NAME module...): an imported target gull_pkg_NAME for system libraries, their headers taken as
# system headers so that warnings in them do not count.
function(gull_package name)
    pkg_check_modules(GULL_PKG_${name} REQUIRED IMPORTED_TARGET ${ARGN})
    add_library(gull_pkg_${name} INTERFACE)
    target_link_libraries(gull_pkg_${name} INTERFACE PkgConfig::GULL_PKG_${name})
endfunction()

# gull_room(Path/Of/Room [ROOMS room...] [PUBLIC lib...] [PRIVATE lib...] [LINUX file...])
# ROOMS are other rooms by their path; libraries of a room that show in its headers are PUBLIC. Files named
# *Mac.cpp and *Mac.mm are for macOS only, those listed as LINUX for everything else.
function(gull_room path)
    cmake_parse_arguments(ROOM "" "" "ROOMS;PUBLIC;PRIVATE;LINUX" ${ARGN})
    string(REPLACE "/" "_" target ${path})
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Sources/${path}/*.cpp
        ${PROJECT_SOURCE_DIR}/Sources/${path}/*.mm)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    if(APPLE)
        foreach(file ${ROOM_LINUX})
            list(REMOVE_ITEM sources ${PROJECT_SOURCE_DIR}/Sources/${path}/${file})
        endforeach()
    else()
        list(FILTER sources EXCLUDE REGEX "Mac\\.(cpp|mm)$")
    endif()
    set(rooms ${ROOM_ROOMS})
    if(NOT path STREQUAL Engine/Log)
        list(APPEND rooms Engine/Log)  # every room may have something to say
    endif()
    list(TRANSFORM rooms REPLACE "/" "_")
    if(sources)
        add_library(${target} STATIC ${sources})
        target_link_libraries(${target} PUBLIC gull_options ${rooms} ${ROOM_PUBLIC} PRIVATE ${ROOM_PRIVATE})
    else()
        add_library(${target} INTERFACE)
        target_link_libraries(${target} INTERFACE gull_options ${rooms} ${ROOM_PUBLIC})
    endif()
endfunction()

# gull_room_tests(Path/Of/Room [ROOMS room...] [LIBS lib...]): every *Test.cpp of Tests/Path/Of/Room.
# ROOMS are further rooms that the tests use.
function(gull_room_tests path)
    cmake_parse_arguments(ROOM "" "" "ROOMS;LIBS" ${ARGN})
    string(REPLACE "/" "_" target ${path})
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Tests/${path}/*.cpp)
    if(NOT sources)
        return()
    endif()
    set(rooms ${ROOM_ROOMS})
    list(TRANSFORM rooms REPLACE "/" "_")
    add_executable(${target}_tests ${sources})
    target_include_directories(${target}_tests PRIVATE ${PROJECT_SOURCE_DIR}/Tests)
    if(TARGET ${target})
        list(PREPEND rooms ${target})
    endif()
    target_link_libraries(${target}_tests PRIVATE gull_options ${rooms} ${ROOM_LIBS} GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${target}_tests TEST_PREFIX "${path}/" DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT 300 WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} ENVIRONMENT "${GULL_TEST_ENVIRONMENT}")
endfunction()

# gull_shaders(Path/Of/Room): embeds Sources/Path/Of/Room/Shaders in the room, whose Shaders.h declares the strings.
function(gull_shaders path)
    string(REPLACE "/" "_" target ${path})
    set(folder ${PROJECT_SOURCE_DIR}/Sources/${path}/Shaders)
    set(output ${CMAKE_CURRENT_BINARY_DIR}/${target}_shaders.cpp)
    set(script ${PROJECT_SOURCE_DIR}/cmake/EmbedShaders.cmake)
    file(GLOB shaders CONFIGURE_DEPENDS ${folder}/*.glsl ${folder}/*.h)
    add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -D SHADERS=${folder} -D HEADER=${path}/Shaders.h -D OUTPUT=${output} -P ${script}
        DEPENDS ${shaders} ${script} VERBATIM COMMENT "Embedding the shaders of ${path}")
    target_sources(${target} PRIVATE ${output})
endfunction()
