// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QFont;

/// Has the desktop's font stand in where the fonts that the style sheet names are not installed.
/// The system's own choice for them may be any other font.
void substituteDesktopFont(const QFont &desktopFont);
