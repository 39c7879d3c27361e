# SPDX-License-Identifier: GPL-3.0-or-later
include(GNUInstallDirs)

set(folder "${CMAKE_CURRENT_SOURCE_DIR}/linux")
set(icons "${PROJECT_SOURCE_DIR}/assets/icons")
set(documents "${CMAKE_CURRENT_BINARY_DIR}/documents")

# The newest entry of the change log gives the package's version and maintainer.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${folder}/changelog")
file(STRINGS "${folder}/changelog" lines)
list(GET lines 0 headline)
list(FILTER lines INCLUDE REGEX "^ -- ")
list(GET lines 0 signature)
string(REGEX MATCH "^vaskel \\((.*)-(.*)\\) " headline "${headline}")
set(version "${CMAKE_MATCH_1}")
set(revision "${CMAKE_MATCH_2}")
string(REGEX REPLACE "^ -- (.*>)  .*" "\\1" maintainer "${signature}")
if(NOT version STREQUAL PROJECT_VERSION)
    message(FATAL_ERROR "packaging/linux/changelog has no entry for version ${PROJECT_VERSION}.")
endif()

# Debian's policy requires compressed files without time stamps.
function(vaskel_compress source file)
    add_custom_command(
        OUTPUT "${documents}/${file}.gz"
        COMMAND ${CMAKE_COMMAND} -E make_directory "${documents}"
        COMMAND ${CMAKE_COMMAND} -E copy "${source}" "${documents}/${file}"
        COMMAND gzip --best --no-name --force "${documents}/${file}"
        DEPENDS "${source}"
        VERBATIM
    )
    set_property(TARGET vaskel_documents APPEND PROPERTY SOURCES "${documents}/${file}.gz")
endfunction()

add_custom_target(vaskel_documents ALL)
vaskel_compress("${folder}/Vaskel.1" Vaskel.1)
vaskel_compress("${folder}/changelog" changelog.Debian)
vaskel_compress("${PROJECT_SOURCE_DIR}/CHANGELOG.md" changelog)

function(vaskel_install destination)
    install(FILES ${ARGN} DESTINATION "${destination}" COMPONENT Vaskel)
endfunction()

install(TARGETS Vaskel RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Vaskel)
vaskel_install("${CMAKE_INSTALL_DATADIR}/applications" "${folder}/vaskel.desktop")
vaskel_install("${CMAKE_INSTALL_DATADIR}/metainfo" "${folder}/local.vaskel.Vaskel.metainfo.xml")
vaskel_install("${CMAKE_INSTALL_MANDIR}/man1" "${documents}/Vaskel.1.gz")
vaskel_install("${CMAKE_INSTALL_DATADIR}/doc/vaskel"
    "${folder}/copyright"
    "${documents}/changelog.Debian.gz"
    "${documents}/changelog.gz"
)
# The licences of header-only libraries and data, taken from their Debian packages. Other systems
# have them elsewhere.
foreach(package IN ITEMS libfmt-dev libspdlog-dev unicode-data)
    install(FILES "/usr/share/doc/${package}/copyright"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/vaskel/licenses"
        COMPONENT Vaskel
        RENAME ${package}.txt
        OPTIONAL
    )
endforeach()
set(theme "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
foreach(size IN ITEMS 16 22 24 32 48 64 128 256 512)
    install(FILES "${icons}/${size}.png"
        DESTINATION "${theme}/${size}x${size}/apps"
        COMPONENT Vaskel
        RENAME vaskel.png
    )
endforeach()
install(FILES "${PROJECT_SOURCE_DIR}/assets/icon.svg"
    DESTINATION "${theme}/scalable/apps"
    COMPONENT Vaskel
    RENAME vaskel.svg
)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE
)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_NAME vaskel)
set(CPACK_DEBIAN_PACKAGE_VERSION "${version}")
set(CPACK_DEBIAN_PACKAGE_RELEASE "${revision}")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${maintainer}")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Beyond the libraries: the SVG plugin for check marks, and xdg-open for files and pages.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "hicolor-icon-theme, qt6-svg-plugins | libqt6svg6 (<< 6.7.2-5~), xdg-utils"
)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-wqy-microhei | fonts-noto-cjk, plocate")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "libnotify-bin")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "keyboard-driven desktop launcher")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Vaskel is one small window with one box, which a hotkey brings up from
anywhere. A few letters of a program's name find it, Chinese names by their
pinyin too, and Enter starts it.
.
Its commands evaluate an expression, show a folder, search all files by name
and keep a list of tasks. For what they do not find, Vaskel offers a search of
the web.")
