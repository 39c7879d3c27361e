# SPDX-License-Identifier: GPL-3.0-or-later

# Compiled translations are the same for every system, so a cross build may use any lrelease.
if(CMAKE_CROSSCOMPILING)
    find_program(VASKEL_LRELEASE NAMES lrelease lrelease-qt6 HINTS /usr/lib/qt6/bin REQUIRED)
else()
    find_package(Qt6 6.4 REQUIRED COMPONENTS LinguistTools)
    set(VASKEL_LRELEASE Qt6::lrelease)
endif()

# vaskel_compile_translation(source.ts compiled.qm)
#
# Compiles a translation source of the current folder. Leaves out untranslated texts, which then
# stay in English.
function(vaskel_compile_translation source compiled)
    add_custom_command(
        OUTPUT "${compiled}"
        COMMAND ${VASKEL_LRELEASE} -silent "${CMAKE_CURRENT_SOURCE_DIR}/${source}" -qm "${compiled}"
        DEPENDS ${source}
        VERBATIM
    )
endfunction()
