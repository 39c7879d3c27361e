// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

/// Whether the user sees the window: to Qt a minimised one counts as visible too.
inline bool isOnShow(const QWidget &window)
{
    return window.isVisible() && !window.isMinimized();
}
