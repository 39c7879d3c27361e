# SPDX-License-Identifier: GPL-3.0-or-later
#
# The update server and the keys of its answers. Stops if the values would let somebody else on the
# network replace the program. Also runs by itself: cmake -D... -P cmake/VaskelUpdateOptions.cmake

set(VASKEL_UPDATE_SERVER "http://127.0.0.1:8080" CACHE STRING
    "Address of the update server, without a trailing slash; if empty, there are no updates"
)
set(VASKEL_UPDATE_KEY "" CACHE STRING
    "One or two Ed25519 public keys of the update server, in hexadecimal, separated by a semicolon"
)

set(is_loopback OFF)
if(VASKEL_UPDATE_SERVER MATCHES
        "^https?://(127\\.[0-9]+\\.[0-9]+\\.[0-9]+|localhost|\\[::1\\])(:[0-9]+)?(/|$)")
    set(is_loopback ON)
endif()
set(is_https OFF)
if(VASKEL_UPDATE_SERVER MATCHES "^https://[^/]")
    set(is_https ON)
endif()

# Not by if(VASKEL_...), which takes "NO" or "x-NOTFOUND" for nothing.
if(NOT VASKEL_UPDATE_SERVER STREQUAL "" AND NOT is_loopback AND NOT is_https)
    message(FATAL_ERROR "VASKEL_UPDATE_SERVER must begin with https://, unless it is this machine.")
endif()
if(NOT VASKEL_UPDATE_KEY STREQUAL "" AND NOT is_loopback AND NOT is_https)
    message(FATAL_ERROR "VASKEL_UPDATE_KEY needs a VASKEL_UPDATE_SERVER that begins with https://.")
endif()

list(LENGTH VASKEL_UPDATE_KEY key_count)
if(key_count GREATER 2)
    message(FATAL_ERROR "VASKEL_UPDATE_KEY takes two keys at most.")
endif()
foreach(key IN LISTS VASKEL_UPDATE_KEY)
    string(LENGTH "${key}" key_length)
    if(NOT key MATCHES "^[0-9A-Fa-f]+$" OR NOT key_length EQUAL 64)
        message(FATAL_ERROR "A key in VASKEL_UPDATE_KEY is 64 hexadecimal digits, not \"${key}\".")
    endif()
    # These are points of small order: anybody can make a signature that is valid for them.
    if(key MATCHES "^0[01]0+[08]0$")
        message(FATAL_ERROR "VASKEL_UPDATE_KEY is no key of a pair: \"${key}\".")
    endif()
endforeach()
