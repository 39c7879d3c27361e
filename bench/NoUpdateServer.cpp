// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/UpdateServer.h"

// A port of this machine that nobody listens on.
QString updateServer()
{
    return QStringLiteral("http://127.0.0.1:1");
}
