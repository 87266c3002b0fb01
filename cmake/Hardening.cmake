# What a compiler and a linker can do for a program whose code has an error after all: gull_options gets it in
# optimised builds. Tests/House/HardeningTest.cpp looks for it in the built game. Sanitizers have their own checks.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)

set(optimised $<NOT:$<CONFIG:Debug>>)

# -fPIE instead of CMAKE_POSITION_INDEPENDENT_CODE: that would compile the rooms with -fPIC, where no function that
# another file can see may be inlined.
target_compile_options(gull_options INTERFACE -fPIE)
if(NOT APPLE)  # there it is the default
    target_link_options(gull_options INTERFACE -pie)
endif()

# The checks of memcpy and its like by the size of what they write to; 3 knows more sizes than 2. The C library warns
# of a level that it does not have.
set(CMAKE_REQUIRED_FLAGS "-O2 -Werror -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3")
check_cxx_source_compiles("#include <cstdlib>\nint main() {}" GULL_FORTIFY_3)
unset(CMAKE_REQUIRED_FLAGS)
set(fortify $<IF:$<BOOL:${GULL_FORTIFY_3}>,3,2>)
target_compile_options(gull_options INTERFACE
    $<${optimised}:-U_FORTIFY_SOURCE> $<${optimised}:-D_FORTIFY_SOURCE=${fortify}>)

# gull_harden(flag...): each flag that the compiler has for this processor.
function(gull_harden)
    foreach(flag ${ARGN})
        string(MAKE_C_IDENTIFIER "GULL_HAS${flag}" known)
        check_cxx_compiler_flag(${flag} ${known})
        if(${known})
            target_compile_options(gull_options INTERFACE $<${optimised}:${flag}>)
        endif()
    endforeach()
endfunction()
gull_harden(-fstack-protector-strong -fstack-clash-protection)
gull_harden(-fcf-protection -mbranch-protection=standard)  # x86, ARM: no jump but to where one is meant

# All addresses of libraries' functions are found at the start, and their table is read-only from then on.
foreach(flag relro now)
    check_linker_flag(CXX LINKER:-z,${flag} GULL_LINKS_${flag})
    if(GULL_LINKS_${flag})
        target_link_options(gull_options INTERFACE LINKER:-z,${flag})
    endif()
endforeach()
