// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

/// Whether the window is visible and not minimised; isVisible() is also true for a minimised one.
inline bool isShowing(const QWidget &window)
{
    return window.isVisible() && !window.isMinimized();
}
