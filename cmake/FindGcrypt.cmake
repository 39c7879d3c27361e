# SPDX-License-Identifier: GPL-3.0-or-later
#
# Gcrypt::Gcrypt, the library libgcrypt; on Windows the static one. A module of our own, since
# pkg-config would find the build machine's library when cross-compiling.

set(gcrypt_names gcrypt)
set(gpg_error_names gpg-error)
if(WIN32)
    # The import libraries come first otherwise.
    set(gcrypt_names libgcrypt.a)
    set(gpg_error_names libgpg-error.a)
endif()
find_path(Gcrypt_INCLUDE_DIR gcrypt.h)
find_library(Gcrypt_LIBRARY NAMES ${gcrypt_names})
find_library(Gcrypt_ERROR_LIBRARY NAMES ${gpg_error_names})
mark_as_advanced(Gcrypt_INCLUDE_DIR Gcrypt_LIBRARY Gcrypt_ERROR_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Gcrypt
    REQUIRED_VARS Gcrypt_LIBRARY Gcrypt_ERROR_LIBRARY Gcrypt_INCLUDE_DIR
)

if(Gcrypt_FOUND AND NOT TARGET Gcrypt::Gcrypt)
    add_library(Gcrypt::Gcrypt UNKNOWN IMPORTED GLOBAL)
    set_target_properties(Gcrypt::Gcrypt PROPERTIES
        IMPORTED_LOCATION "${Gcrypt_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Gcrypt_INCLUDE_DIR}"
    )
    if(WIN32)
        target_link_libraries(Gcrypt::Gcrypt INTERFACE "${Gcrypt_ERROR_LIBRARY}" ws2_32)
    endif()
endif()
