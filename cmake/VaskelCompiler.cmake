# SPDX-License-Identifier: GPL-3.0-or-later
#
# vaskel_compiler: warnings, definitions, hardening and sanitizers for this project's own code.
# Third-party code never links it.

add_library(vaskel_compiler INTERFACE)

target_compile_options(vaskel_compiler INTERFACE
    $<$<CXX_COMPILER_ID:GNU,Clang>:-Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast>
    $<$<AND:$<CXX_COMPILER_ID:GNU,Clang>,$<BOOL:${VASKEL_WARNINGS_AS_ERRORS}>>:-Werror>
    $<$<CXX_COMPILER_ID:MSVC>:/W4 /utf-8>
    $<$<AND:$<CXX_COMPILER_ID:MSVC>,$<BOOL:${VASKEL_WARNINGS_AS_ERRORS}>>:/WX>
)

target_compile_definitions(vaskel_compiler INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CONTEXTLESS_CONNECT
    QT_NO_FOREACH
    QT_NO_KEYWORDS
    QT_NO_URL_CAST_FROM_STRING
)

# An overflow of a buffer ends the program, and the tables of the dynamic loader become read-only
# before main(). _FORTIFY_SOURCE needs optimisation, and with MinGW a library of its own.
if(LINUX AND NOT VASKEL_SANITIZE)
    set(hardened "$<AND:$<CXX_COMPILER_ID:GNU,Clang>,$<CONFIG:Release,RelWithDebInfo,MinSizeRel>>")
    target_compile_options(vaskel_compiler INTERFACE
        "$<${hardened}:-fstack-protector-strong;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>"
    )
    target_link_options(vaskel_compiler INTERFACE
        "$<${hardened}:LINKER:-z,relro;LINKER:-z,now>"
    )
endif()

if(VASKEL_SANITIZE)
    # For the whole directory, so that libraries built here are instrumented too.
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# Makes a library of the program count which of its lines run, for scripts/coverage. Several threads
# and processes may count at a time.
function(vaskel_count_lines target)
    if(VASKEL_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
        target_link_options(${target} PUBLIC --coverage)
    endif()
endfunction()

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(VASKEL_CCACHE ccache)
    mark_as_advanced(VASKEL_CCACHE)
    if(VASKEL_CCACHE)
        # All clones of this project share the cache, including precompiled headers.
        set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env
            "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}"
            CCACHE_NOHASHDIR=true
            CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
            "${VASKEL_CCACHE}"
        )
    endif()
endif()
