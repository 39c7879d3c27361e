// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <qnamespace.h>

#include <xcb/xproto.h>

/// The keysyms that a key mapping may use for the combination's key, the likelier first; letters in
/// lower case. Empty for an unknown key.
QList<xcb_keysym_t> x11Keysyms(QKeyCombination combination);
