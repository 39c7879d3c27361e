// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qnamespace.h>
#include <xcb/xproto.h>

/// The symbol that a combination's key has in an X11 key map, letters in lower case;
/// XCB_NO_SYMBOL if it has none that is known here.
xcb_keysym_t x11Keysym(QKeyCombination combination);
