// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <xcb/xcb.h>

/// The connection of the application object. Null on other platforms, and while there is none.
xcb_connection_t *x11Connection();

/// The name of its display. Null if that is the default one.
const char *x11DisplayName();
