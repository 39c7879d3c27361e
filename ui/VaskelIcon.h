// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

/// The program's icon for windows, the tray and the command box, in the sizes that these show, from
/// ":/assets/icons". The master, ":/assets/icon.png", is not among them: decoding its 1024 by 1024
/// pixels, and handing them to the window system, would take longer than all else that a start
/// does.
QIcon vaskelIcon();
