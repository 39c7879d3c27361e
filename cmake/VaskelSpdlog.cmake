# SPDX-License-Identifier: GPL-3.0-or-later
#
# vaskel_spdlog: spdlog and fmt as header-only libraries. Only one source file includes them, and
# the program starts faster without two more shared libraries. A cross build uses the headers of the
# build machine.

find_path(VASKEL_SPDLOG_HEADERS spdlog/spdlog.h HINTS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(VASKEL_FMT_HEADERS fmt/format.h HINTS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
mark_as_advanced(VASKEL_SPDLOG_HEADERS VASKEL_FMT_HEADERS)

add_library(vaskel_spdlog INTERFACE)
target_compile_definitions(vaskel_spdlog INTERFACE
    FMT_HEADER_ONLY
    SPDLOG_FMT_EXTERNAL
    # Started programs must not inherit the log file.
    SPDLOG_PREVENT_CHILD_FD
    # The name of the user's folder may have characters outside the code page.
    $<$<PLATFORM_ID:Windows>:SPDLOG_WCHAR_FILENAMES>
)
if(CMAKE_CROSSCOMPILING)
    # Other headers beside them do not fit the target system.
    set(folder "${PROJECT_BINARY_DIR}/include")
    file(MAKE_DIRECTORY "${folder}")
    file(CREATE_LINK "${VASKEL_SPDLOG_HEADERS}/spdlog" "${folder}/spdlog" SYMBOLIC)
    file(CREATE_LINK "${VASKEL_FMT_HEADERS}/fmt" "${folder}/fmt" SYMBOLIC)
    target_include_directories(vaskel_spdlog SYSTEM INTERFACE "${folder}")
else()
    target_include_directories(vaskel_spdlog SYSTEM INTERFACE
        "${VASKEL_SPDLOG_HEADERS}"
        "${VASKEL_FMT_HEADERS}"
    )
endif()
