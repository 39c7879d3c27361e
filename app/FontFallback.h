// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QFont;

/// Substitutes the desktop's font for missing fonts of the style sheet. The system's own fallback
/// could be any font.
void substituteDesktopFont(const QFont &desktopFont);

/// Gives the application, too, the font that the style sheet gives to widgets. Call before the
/// first widget, which would otherwise load another font until the sheet reaches it.
void setApplicationFont();
