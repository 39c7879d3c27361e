# SPDX-License-Identifier: GPL-3.0-or-later

set(CPACK_PACKAGE_FILE_NAME "Vaskel-${PROJECT_VERSION}-windows-x86_64")

install(TARGETS Vaskel RUNTIME DESTINATION . COMPONENT Vaskel)

configure_file(windows/README.txt.in README.txt @ONLY NEWLINE_STYLE CRLF)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/README.txt" DESTINATION . COMPONENT Vaskel)

# The licences of the linked libraries, taken from their Debian packages.
set(licenses
    Vaskel /usr/share/common-licenses/GPL-3
    LGPL-3 /usr/share/common-licenses/LGPL-3
    Qt /usr/share/doc/qt6-base-dev/copyright
    fmt /usr/share/doc/libfmt-dev/copyright
    libgcrypt /usr/share/doc/libgcrypt-mingw-w64-dev/copyright
    libgpg-error /usr/share/doc/libgpg-error-mingw-w64-dev/copyright
    gcc /usr/share/doc/gcc-mingw-w64-base/copyright
    mingw-w64 /usr/share/doc/mingw-w64-common/copyright
    spdlog /usr/share/doc/libspdlog-dev/copyright
    unicode-data /usr/share/doc/unicode-data/copyright
)
while(licenses)
    list(POP_FRONT licenses name file)
    install(FILES "${file}"
        DESTINATION licenses
        COMPONENT Vaskel
        RENAME ${name}.txt
    )
endwhile()

# CPack's own installer generator supports neither a folder of the user nor a second language. One
# staged folder serves both packages: stripping Vaskel.exe twice would give two different files.
set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_REQUESTED_VERSIONS 1.0)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT "${CMAKE_CURRENT_BINARY_DIR}/make-packages.cmake")
configure_file(windows/make-packages.cmake.in make-packages.cmake @ONLY)
