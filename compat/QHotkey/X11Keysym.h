// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <qnamespace.h>

#include <xcb/xproto.h>

/// The symbols that a combination's key may have in an X11 key map, letters in lower case; the
/// likelier first, and none if it has none that is known here.
QList<xcb_keysym_t> x11Keysyms(QKeyCombination combination);
