# SPDX-License-Identifier: GPL-3.0-or-later
#
# Libraries that few distributions package for this Qt. Each has the target name of its upstream
# project and comes from the first available of these sources:
#
#   1. an installed package that was built for this Qt,
#   2. the source folder that FETCHCONTENT_SOURCE_DIR_<NAME> gives, the name in capitals,
#   3. the upstream release, if VASKEL_FETCH_DEPENDENCIES is on,
#   4. our stand-in in compat/.

include(FetchContent)

# vaskel_add_dependency(Name target REPOSITORY url COMMIT hash
#                       [COMPONENTS component...] [INSTALLED_TARGET target]
#                       [SETTINGS variable value ...])
#
# COMPONENTS belong to the installed package; INSTALLED_TARGET is its target, if that has another
# name there. SETTINGS are variables for the library's own CMake code when it is built here.
# cmake/probe/<Name>.cpp uses the library as this project does.
function(vaskel_add_dependency name target)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "REPOSITORY;COMMIT;INSTALLED_TARGET" "COMPONENTS;SETTINGS")
    if(TARGET ${target})
        return()
    endif()

    set(package ${name} CONFIG)
    if(arg_COMPONENTS)
        list(APPEND package COMPONENTS ${arg_COMPONENTS})
    endif()
    add_subdirectory("${PROJECT_SOURCE_DIR}/cmake/probe" "${PROJECT_BINARY_DIR}/cmake/probe/${name}")

    string(TOUPPER "${name}" upper_name)
    if(usable)
        find_package(${package} REQUIRED GLOBAL)
        if(NOT TARGET ${target})
            add_library(${target} ALIAS ${arg_INSTALLED_TARGET})
        endif()
        message(STATUS "${name}: installed in ${${name}_DIR}")
    elseif(FETCHCONTENT_SOURCE_DIR_${upper_name} OR VASKEL_FETCH_DEPENDENCIES)
        while(arg_SETTINGS)
            list(POP_FRONT arg_SETTINGS variable value)
            set(${variable} ${value})
        endwhile()
        # Otherwise the options of an old project would override these settings.
        set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
        FetchContent_Declare(${name} SYSTEM
            GIT_REPOSITORY ${arg_REPOSITORY}
            GIT_TAG ${arg_COMMIT}
        )
        FetchContent_MakeAvailable(${name})
        FetchContent_GetProperties(${name} SOURCE_DIR source_folder)
        message(STATUS "${name}: built from ${source_folder}")
    else()
        add_subdirectory("${PROJECT_SOURCE_DIR}/compat/${name}" "${PROJECT_BINARY_DIR}/compat/${name}")
        vaskel_count_lines(compat_${name})
        message(STATUS "${name}: our stand-in")
    endif()
endfunction()

vaskel_add_dependency(SingleApplication SingleApplication::SingleApplication
    REPOSITORY https://github.com/itay-grudev/SingleApplication.git
    COMMIT b117282439dd3bbfea3fb715b6ff04549dbfa1e7 # v3.5.5
    SETTINGS
        QT_DEFAULT_MAJOR_VERSION 6
        QAPPLICATION_CLASS QApplication
)

# QWindowKit 1.5 and later need Qt 6.5 for Wayland.
if(Qt6_VERSION VERSION_LESS 6.5)
    set(qwindowkit_commit 5c04046acae6e61280fba7fef31401edd7c36087) # 1.4.0
else()
    set(qwindowkit_commit 35e88f3655720ed0537c7dd1dde243bf4a70c94c) # 1.5.0
endif()
vaskel_add_dependency(QWindowKit QWindowKit::Widgets
    REPOSITORY https://github.com/stdware/qwindowkit.git
    COMMIT ${qwindowkit_commit}
    COMPONENTS Core Widgets
    SETTINGS
        QWINDOWKIT_BUILD_STATIC ON
        QWINDOWKIT_INSTALL OFF
)

vaskel_add_dependency(QHotkey QHotkey::QHotkey
    REPOSITORY https://github.com/Skycoder42/QHotkey.git
    COMMIT 34330d6ff5d2ca111c376f6d7da66be9d1817430 # 1.5.0
    INSTALLED_TARGET qhotkey
    SETTINGS
        CMAKE_POLICY_VERSION_MINIMUM 3.5 # CMake 4 rejects the 3.1 that it asks for
        QT_DEFAULT_MAJOR_VERSION 6
        QHOTKEY_INSTALL OFF
)
