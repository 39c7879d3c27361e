// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowFocus.h"

#include <QGuiApplication>
#include <QWindow>

namespace platform {

void refuseFocus(QWindow *window)
{
    // Not the application's interface: the offscreen platform has one, too, without a connection.
    if (QGuiApplication::platformName() == QLatin1StringView("xcb")) {
        window->setFlag(Qt::WindowDoesNotAcceptFocus);
    }
}

} // namespace platform
