# SPDX-License-Identifier: GPL-3.0-or-later
# vaskel_add_test: the tests of a folder are one program, because linking each test separately takes
# longer than compiling it. Each test class still runs in its own process.

# The prefix of host paths for a program under wine.
if(CMAKE_CROSSCOMPILING)
    set(VASKEL_FILE_PREFIX "Z:")
else()
    set(VASKEL_FILE_PREFIX)
endif()

# The prefix of wine is kept between runs.
set(VASKEL_WINE "${PROJECT_SOURCE_DIR}/tests/support/with-wine" --prefix "${PROJECT_BINARY_DIR}/wine")

# QWindowKit removes the frame of an existing window, which the offscreen platform does not expect.
# So its windows have no frame from the start.
set(VASKEL_OFFSCREEN offscreen)
if(NOT TARGET compat_QWindowKit)
    string(APPEND VASKEL_OFFSCREEN ":configfile=${PROJECT_SOURCE_DIR}/tests/support/frameless.json")
endif()

# Fonts for the offscreen platform, which reads a single folder.
if(CMAKE_CROSSCOMPILING)
    set(VASKEL_FONTS "${PROJECT_BINARY_DIR}/fonts")
    file(MAKE_DIRECTORY "${VASKEL_FONTS}")
    file(GLOB fonts /usr/share/fonts/truetype/dejavu/*.ttf /usr/share/fonts/truetype/wqy/*.ttc)
    foreach(font IN LISTS fonts)
        get_filename_component(font_name "${font}" NAME)
        file(CREATE_LINK "${font}" "${VASKEL_FONTS}/${font_name}" SYMBOLIC)
    endforeach()
endif()

# Qt Test without the folder definitions that differ per target; with them, targets could not share
# a precompiled header.
add_library(vaskel_qt_test INTERFACE)
target_include_directories(vaskel_qt_test SYSTEM INTERFACE
    $<TARGET_PROPERTY:Qt6::Test,INTERFACE_INCLUDE_DIRECTORIES>
)
target_link_libraries(vaskel_qt_test INTERFACE $<LINK_ONLY:Qt6::Test>)

# The cases of a test class except the named ones, according to the declarations in its source.
function(vaskel_other_cases variable source)
    file(READ "${source}" text)
    string(REGEX REPLACE ".*private Q_SLOTS:" "" text "${text}") # the last class is the test
    string(REGEX MATCHALL "\n    void [A-Za-z0-9]+\\(\\)" declarations "${text}")
    set(cases)
    foreach(declaration IN LISTS declarations)
        string(REGEX REPLACE ".* void ([A-Za-z0-9]+).*" "\\1" case "${declaration}")
        list(APPEND cases "${case}")
    endforeach()
    list(REMOVE_ITEM cases init cleanup initTestCase cleanupTestCase ${ARGN})
    set(${variable} ${cases} PARENT_SCOPE)
endfunction()

# The test program of the current folder for one half of platform/; created at the first call.
function(vaskel_test_program variable on_fake)
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
    string(REPLACE "/" "_" program "${folder}")
    if(on_fake)
        string(APPEND program _on_fake)
    endif()
    set(${variable} ${program} PARENT_SCOPE)
    if(TARGET ${program})
        return()
    endif()
    qt_add_executable(${program})
    set_target_properties(${program} PROPERTIES AUTOMOC ON)
    target_precompile_headers(${program} REUSE_FROM vaskel_test_main)
    if(on_fake)
        target_link_libraries(${program} PRIVATE vaskel_fake_platform)
    endif()
    target_link_libraries(${program} PRIVATE
        vaskel_test_main
        vaskel_test_support
        vaskel_test_update_server
        vaskel
        vaskel_compiler
    )
    if(CMAKE_CROSSCOMPILING)
        # A static program has only the plugins that are linked into it.
        qt_import_plugins(${program} INCLUDE Qt6::QOffscreenIntegrationPlugin)
    endif()
endfunction()

# Creates the symbolic link that starts a test program for one class. On Windows it is beside the
# libraries of the program.
function(vaskel_link_test variable name program)
    set(folder "${CMAKE_CURRENT_BINARY_DIR}")
    if(CMAKE_RUNTIME_OUTPUT_DIRECTORY)
        set(folder "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    endif()
    set(link "${folder}/${name}${CMAKE_EXECUTABLE_SUFFIX}")
    file(CREATE_LINK "${program}${CMAKE_EXECUTABLE_SUFFIX}" "${link}" SYMBOLIC)
    set(${variable} "${link}" PARENT_SCOPE)
endfunction()

# vaskel_add_test(tst_Class [FAKE_PLATFORM] [WINDOW_MANAGER] [SESSION_BUS]
#                 [OBJECTS library] [SOURCES file...] [LIBRARIES target...]
#                 [DEFINITIONS definition...] [DEPENDS target...] [UNIX_CASES case...]
#                 [LEFT_OUT_CASES case...])
#
# Adds tst_Class.cpp to the test program of the current folder and registers the test
# "folder/tst_Class". Sets tst_Class_PROGRAM to the path that runs only this class.
#
# FAKE_PLATFORM    links the recording fakes of platform/ instead of the bodies of the system.
# WINDOW_MANAGER   runs the test on a separate X display with a window manager; under wine, on a
#                  separate Windows desktop. Without it the test runs offscreen.
# SESSION_BUS      the same with a separate session bus.
# OBJECTS          an object library with tst_Class.cpp, for a class that runs on the fakes and on
#                  the bodies of the system. On the fakes its name is tst_ClassOnFake.
# DEFINITIONS      preprocessor definitions for tst_Class.cpp.
# DEPENDS          programs that the test starts.
# UNIX_CASES       cases that need a Unix; they do not run under wine.
# LEFT_OUT_CASES   cases that do not run in this build.
function(vaskel_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg
        "FAKE_PLATFORM;WINDOW_MANAGER;SESSION_BUS"
        "OBJECTS"
        "SOURCES;LIBRARIES;DEFINITIONS;DEPENDS;UNIX_CASES;LEFT_OUT_CASES"
    )
    get_filename_component(folder "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
    set(source "${name}.cpp")

    vaskel_test_program(program "${arg_FAKE_PLATFORM}")
    if(NOT arg_OBJECTS)
        target_sources(${program} PRIVATE ${source})
        set_source_files_properties(${source} PROPERTIES COMPILE_DEFINITIONS "${arg_DEFINITIONS}")
    endif()
    target_sources(${program} PRIVATE ${arg_SOURCES})
    target_link_libraries(${program} PRIVATE ${arg_OBJECTS} ${arg_LIBRARIES})
    if(arg_DEPENDS)
        add_dependencies(${program} ${arg_DEPENDS})
    endif()
    vaskel_link_test(link ${name} ${program})
    set(${name}_PROGRAM "${link}" PARENT_SCOPE)

    set(environment "QT_QPA_PLATFORM=${VASKEL_OFFSCREEN}" LC_ALL=C.UTF-8 LANGUAGE= TZ=UTC)
    set(runner)
    set(cases)
    set(left_out ${arg_LEFT_OUT_CASES})
    if(CMAKE_CROSSCOMPILING)
        set(runner ${VASKEL_WINE} --qtest)
        if(arg_WINDOW_MANAGER)
            set(runner
                "${PROJECT_SOURCE_DIR}/tests/support/with-window-manager" --screen 1600x1200
                ${runner} --desktop
            )
        endif()
        list(APPEND environment "QT_QPA_FONTDIR=Z:${VASKEL_FONTS}")
        list(APPEND left_out ${arg_UNIX_CASES})
    else()
        list(APPEND environment "HOME=${CMAKE_BINARY_DIR}/test-home")
        if(arg_SESSION_BUS)
            set(runner "${PROJECT_SOURCE_DIR}/tests/support/with-window-manager" --session-bus)
        elseif(arg_WINDOW_MANAGER)
            set(runner "${PROJECT_SOURCE_DIR}/tests/support/with-window-manager")
        endif()
    endif()
    if(left_out)
        vaskel_other_cases(cases "${CMAKE_CURRENT_SOURCE_DIR}/${source}" ${left_out})
    endif()
    add_test(NAME ${folder}/${name} COMMAND ${runner} "${link}" ${cases})
    set_tests_properties(${folder}/${name} PROPERTIES
        ENVIRONMENT "${environment}"
        TIMEOUT $<IF:$<BOOL:${VASKEL_SANITIZE}>,1200,300> # seconds
    )
endfunction()
