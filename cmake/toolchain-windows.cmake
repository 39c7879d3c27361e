# SPDX-License-Identifier: GPL-3.0-or-later
#
# Builds for 64-bit Windows with Debian's mingw-w64. VASKEL_QT_WINDOWS, a CMake or environment
# variable, names the folder that packaging/windows/build-qt.sh creates: qt-windows/ contains a
# static Qt for this compiler, and qt-host/ the tools of the same Qt for the build machine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(NOT VASKEL_QT_WINDOWS)
    set(VASKEL_QT_WINDOWS "$ENV{VASKEL_QT_WINDOWS}")
endif()
set(VASKEL_QT_WINDOWS "${VASKEL_QT_WINDOWS}" CACHE PATH "Folder with qt-windows/ and qt-host/")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VASKEL_QT_WINDOWS)
if(NOT EXISTS "${VASKEL_QT_WINDOWS}/qt-windows/lib/cmake/Qt6/Qt6Config.cmake")
    message(FATAL_ERROR "VASKEL_QT_WINDOWS names no folder with a Qt for Windows: \"${VASKEL_QT_WINDOWS}\"")
endif()

set(QT_HOST_PATH "${VASKEL_QT_WINDOWS}/qt-host" CACHE PATH "Tools of the same Qt for this machine" FORCE)
set(CMAKE_FIND_ROOT_PATH "${VASKEL_QT_WINDOWS}/qt-windows" /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Debian patches Qt's CMake code so that a project links no plugins by default. A static program has
# only the plugins that it links.
set(QT_SKIP_AUTO_PLUGIN_INCLUSION OFF)

# The programs depend on the system's libraries only.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -fstack-protector")
