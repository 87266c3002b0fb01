# cmake -D SHADERS=folder -D HEADER=path -D OUTPUT=file -P EmbedShaders.cmake
# Writes a C++ source that defines what HEADER declares: for every `name.vert.glsl` and `name.frag.glsl` of the folder
# a string `nameVertex` or `nameFragment`, and the names of all files.
#
# `#include "file"` at the start of a line stands for that file, once in each shader however often it is included. It
# must not stand between #if and #endif: a later include of the same file would find it left out. `#line` says where
# each line comes from: line n of the f-th file in the order of their names, from 1, is line 10000 f + n. (Not by
# source string numbers, which GLSL has for this: Mesa's messages lose them.)

cmake_minimum_required(VERSION 3.25)
file(GLOB files RELATIVE ${SHADERS} ${SHADERS}/*.glsl ${SHADERS}/*.h)

function(count pattern text result)
    string(REGEX MATCHALL "${pattern}" found "${text}")
    list(LENGTH found number)
    set(${result} ${number} PARENT_SCOPE)
endfunction()

# Appends `file` to `expanded` unless it is in `included` already.
function(expand file)
    if(file IN_LIST included)
        return(PROPAGATE included expanded)
    endif()
    list(APPEND included ${file})
    list(FIND files ${file} number)
    if(number EQUAL -1)
        message(FATAL_ERROR "${SHADERS} has no ${file}, which ${chain} includes")
    endif()
    math(EXPR line "(${number} + 1) * 10000 + 1")
    string(APPEND expanded "#line ${line}\n")

    file(READ ${SHADERS}/${file} rest)
    set(open 0)
    while(rest MATCHES "(^|\n)(#include[ \t]+\"([^\"\n]+)\"[^\n]*\n)")
        set(newline "${CMAKE_MATCH_1}")
        set(directive "${CMAKE_MATCH_2}")
        set(target ${CMAKE_MATCH_3})
        string(FIND "${rest}" "${newline}${directive}" position)
        string(LENGTH "${newline}" length)
        math(EXPR position "${position} + ${length}")
        string(SUBSTRING "${rest}" 0 ${position} before)
        string(LENGTH "${directive}" length)
        math(EXPR after "${position} + ${length}")
        string(SUBSTRING "${rest}" ${after} -1 rest)
        string(APPEND expanded "${before}")

        count("\n" "${before}" lines)
        math(EXPR line "${line} + ${lines} + 1")
        count("(^|\n)#if" "${before}" ifs)
        count("(^|\n)#endif" "${before}" endifs)
        math(EXPR open "${open} + ${ifs} - ${endifs}")
        if(NOT open EQUAL 0)
            message(FATAL_ERROR "${file}: the include of ${target} stands between #if and #endif")
        endif()
        set(chain ${file})
        expand(${target})
        string(APPEND expanded "#line ${line}\n")
    endwhile()
    string(APPEND expanded "${rest}")
    return(PROPAGATE included expanded)
endfunction()

set(text "// Made by EmbedShaders.cmake of the files in Shaders.\n#include \"${HEADER}\"\n\nnamespace gull::shaders {\n")
set(names "")
foreach(file IN LISTS files)
    string(APPEND names "    \"${file}\",\n")
    if(file MATCHES "^([A-Za-z]+)\\.(vert|frag)\\.glsl$")
        set(name ${CMAKE_MATCH_1}Vertex)
        if(CMAKE_MATCH_2 STREQUAL frag)
            set(name ${CMAKE_MATCH_1}Fragment)
        endif()
        set(included "")
        set(expanded "")
        set(chain ${file})
        expand(${file})
        string(APPEND text "\nconst std::string_view ${name} = R\"glsl(${expanded})glsl\";\n")
    endif()
endforeach()
string(APPEND text
    "\nstatic const std::string_view names[] = {\n${names}};\n"
    "const std::span<const std::string_view> fileNames = names;\n\n}  // namespace gull::shaders\n")
file(WRITE ${OUTPUT} "${text}")
