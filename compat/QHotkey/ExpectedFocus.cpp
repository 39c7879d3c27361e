// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExpectedFocus.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace {

bool canHaveFocus(const QWindow *window)
{
    return window->isVisible() && !(window->windowStates() & Qt::WindowMinimized)
           && !(window->flags() & (Qt::WindowDoesNotAcceptFocus | Qt::BypassWindowManagerHint));
}

} // namespace

bool expectsFocus()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(), canHaveFocus);
}
