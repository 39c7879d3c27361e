#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
#
# usage: packaging/windows/build-qt.sh [--only fetch|headers|host|target] [FOLDER]
#
# Builds the static Qt for the preset "windows" from Debian's source package of qt6-base with the
# installed mingw-w64. FOLDER defaults to vaskel/qt-windows in the user's cache. Afterwards it
# contains qt-windows/, qt-host/ with the tools of the same version, and work/, which can be
# deleted. Takes about 45 minutes on two cores; finished steps are not repeated.
set -euo pipefail

version=6.8.2
suite=trixie # Debian 13, which has this version

only=
if [[ ${1:-} == --only ]]; then
    only=$2
    shift 2
fi
folder=${1:-${XDG_CACHE_HOME:-$HOME/.cache}/vaskel/qt-windows}
mkdir -p "$folder/work"
folder=$(cd "$folder" && pwd)
work=$folder/work
source=$work/qt6-base-$version+dfsg
headers=$work/headers
target=x86_64-w64-mingw32

"$(dirname "$0")/../../scripts/install-packages" build windows qt

# Verifies packages with the archive's keys and leaves the machine's package sources unchanged.
apt_of_suite() {
    mkdir -p "$work/apt/lists/partial" "$work/apt/cache/archives/partial"
    cat >"$work/apt/sources.list" <<SOURCES
deb [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] http://deb.debian.org/debian $suite main
deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] http://deb.debian.org/debian $suite main
SOURCES
    apt-get -q \
        -o Dir::Etc::SourceList="$work/apt/sources.list" -o Dir::Etc::SourceParts=- \
        -o Dir::State::Lists="$work/apt/lists" -o Dir::Cache="$work/apt/cache" \
        -o APT::Sandbox::User=root -o Acquire::Retries=3 "$@"
}

fetch() {
    [[ -e $source/CMakeLists.txt ]] && return
    cd "$work"
    apt_of_suite update
    apt_of_suite source --download-only "qt6-base=$version+dfsg*" ||
        apt_of_suite source --download-only qt6-base
    rm -rf "$source"
    dpkg-source -x qt6-base_"$version"*.dsc "$source"
}

# The UI Automation headers of mingw-w64 before 11 are too old for this Qt.
fetch_headers() {
    mkdir -p "$headers"
    local installed
    installed=$(dpkg-query -W -f='${Version}' mingw-w64-common)
    if dpkg --compare-versions "$installed" ge 11 || [[ -e $headers/uiautomation.h ]]; then
        return
    fi
    cd "$work"
    apt_of_suite update
    apt_of_suite download mingw-w64-common
    rm -rf mingw-w64-common
    dpkg-deb -x mingw-w64-common_*.deb mingw-w64-common
    cp mingw-w64-common/usr/share/mingw-w64/include/uiautomation*.h "$headers/"
}

# Both builds leave out what Vaskel does not use.
common=(
    -G Ninja
    -DCMAKE_BUILD_TYPE=Release
    -DBUILD_SHARED_LIBS=OFF
    -DQT_BUILD_EXAMPLES=OFF
    -DQT_BUILD_TESTS=OFF
    -DQT_GENERATE_SBOM=OFF # needs files that Debian leaves out
    -DFEATURE_dbus=OFF
    -DFEATURE_sql=OFF
)

build_host() {
    [[ -e $folder/qt-host/libexec/uic ]] && return
    cmake -S "$source" -B "$work/host" "${common[@]}" \
        -DCMAKE_INSTALL_PREFIX="$folder/qt-host" \
        -DFEATURE_network=OFF -DFEATURE_testlib=OFF -DFEATURE_opengl=OFF -DINPUT_opengl=no \
        -DFEATURE_xcb=OFF -DFEATURE_vulkan=OFF
    cmake --build "$work/host"
    cmake --install "$work/host"
}

write_toolchain() {
    cat >"$work/toolchain.cmake" <<TOOLCHAIN
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER $target-gcc-posix)
set(CMAKE_CXX_COMPILER $target-g++-posix)
set(CMAKE_RC_COMPILER $target-windres)
set(CMAKE_FIND_ROOT_PATH /usr/$target)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
TOOLCHAIN
}

build_target() {
    [[ -e $folder/qt-windows/lib/libQt6Widgets.a ]] && return
    write_toolchain
    # GCC 12 for mingw crashes with stack clash protection. The header for tablets is not free, so the
    # source package lacks it.
    CPLUS_INCLUDE_PATH=$headers cmake -S "$source" -B "$work/target" "${common[@]}" \
        -DCMAKE_TOOLCHAIN_FILE="$work/toolchain.cmake" \
        -DQT_HOST_PATH="$folder/qt-host" \
        -DCMAKE_INSTALL_PREFIX="$folder/qt-windows" \
        -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF \
        -DFEATURE_concurrent=OFF -DFEATURE_printsupport=OFF -DFEATURE_xml=OFF \
        -DFEATURE_vulkan=OFF -DFEATURE_icu=OFF -DFEATURE_glib=OFF -DFEATURE_pkg_config=OFF \
        -DFEATURE_tabletevent=OFF -DINPUT_opengl=no -DINPUT_openssl=no -DFEATURE_schannel=ON \
        -DFEATURE_system_zlib=OFF -DFEATURE_system_pcre2=OFF -DFEATURE_system_png=OFF \
        -DFEATURE_system_jpeg=OFF -DFEATURE_system_freetype=OFF -DFEATURE_system_harfbuzz=OFF \
        -DFEATURE_system_doubleconversion=OFF \
        -DFEATURE_stack_clash_protection=OFF -DFEATURE_intelcet=OFF
    CPLUS_INCLUDE_PATH=$headers cmake --build "$work/target"
    cmake --install "$work/target"
}

case $only in
'' | fetch | headers | host | target) ;;
*)
    echo "build-qt.sh: there is no step \"$only\"" >&2
    exit 2
    ;;
esac
[[ -n $only && $only != fetch ]] || fetch
[[ -n $only && $only != headers ]] || fetch_headers
[[ -n $only && $only != host ]] || build_host
[[ -n $only && $only != target ]] || build_target
echo "VASKEL_QT_WINDOWS=$folder"
