// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

/// The program's icon for windows, the tray and the command box, in the sizes that they show. It is
/// read from ":/assets/icons". ":/assets/icon.png", with 1024 by 1024 pixels, is left out: decoding
/// it and passing it to the window system takes longer than the rest of the start.
QIcon vaskelIcon();
