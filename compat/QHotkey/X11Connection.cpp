// SPDX-License-Identifier: GPL-3.0-or-later
#include "X11Connection.h"

#include <QGuiApplication>

// Its macros collide with names of Qt, so it comes last.
#include <X11/Xlib.h>

namespace {

QNativeInterface::QX11Application *x11Application()
{
    auto *app = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    return app ? app->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
}

} // namespace

xcb_connection_t *x11Connection()
{
    const auto *x11 = x11Application();
    return x11 ? x11->connection() : nullptr;
}

const char *x11DisplayName()
{
    const auto *x11 = x11Application();
    return x11 && x11->display() ? DisplayString(x11->display()) : nullptr;
}
