# SPDX-License-Identifier: GPL-3.0-or-later
#
# vaskel_spdlog: spdlog and fmt, both as headers alone. One source includes them, and the program
# starts sooner without two more libraries to load. A build for another system takes the headers of
# the building one.

find_path(VASKEL_SPDLOG_HEADERS spdlog/spdlog.h HINTS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(VASKEL_FMT_HEADERS fmt/format.h HINTS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
mark_as_advanced(VASKEL_SPDLOG_HEADERS VASKEL_FMT_HEADERS)

add_library(vaskel_spdlog INTERFACE)
target_compile_definitions(vaskel_spdlog INTERFACE
    FMT_HEADER_ONLY
    SPDLOG_FMT_EXTERNAL
    # What is started from here inherits no log file.
    SPDLOG_PREVENT_CHILD_FD
    # The user's folder may have a name that the code page cannot spell.
    $<$<PLATFORM_ID:Windows>:SPDLOG_WCHAR_FILENAMES>
)
if(CMAKE_CROSSCOMPILING)
    # What lies beside them is not for the other system.
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
