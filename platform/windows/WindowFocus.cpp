// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowFocus.h"

#include <QGuiApplication>
#include <QWindow>

#include <windows.h>

namespace platform {

void refuseFocus(QWindow *window)
{
    if (QGuiApplication::platformName() != QLatin1StringView("windows")) {
        return;
    }
    window->setFlag(Qt::WindowDoesNotAcceptFocus); // sets the styles anew, so it comes first
    const auto handle = reinterpret_cast<HWND>(window->winId());
    SetWindowLongPtrW(handle, GWL_EXSTYLE,
                      GetWindowLongPtrW(handle, GWL_EXSTYLE) | WS_EX_NOACTIVATE);
}

void refuseFocusOfTray() {}

} // namespace platform
