# SPDX-License-Identifier: GPL-3.0-or-later

# Catalogues are the same for every system, so that a build for another one takes any lrelease.
if(CMAKE_CROSSCOMPILING)
    find_program(VASKEL_LRELEASE NAMES lrelease lrelease-qt6 HINTS /usr/lib/qt6/bin REQUIRED)
else()
    find_package(Qt6 6.4 REQUIRED COMPONENTS LinguistTools)
    set(VASKEL_LRELEASE Qt6::lrelease)
endif()

# vaskel_compile_catalogue(source.ts catalogue.qm)
#
# Compiles a translation of the current folder. A text without one is left out, so that it is shown
# in English.
function(vaskel_compile_catalogue source catalogue)
    add_custom_command(
        OUTPUT "${catalogue}"
        COMMAND ${VASKEL_LRELEASE} -silent "${CMAKE_CURRENT_SOURCE_DIR}/${source}" -qm "${catalogue}"
        DEPENDS ${source}
        VERBATIM
    )
endfunction()
