// SPDX-License-Identifier: GPL-3.0-or-later
#include "compat/windows/RealInput.h"

#include <QProcess>

namespace realinput {

void send(const QStringList &commands)
{
    // xdotool is a program of the host system: wine starts it but returns no handle.
    if (!QProcess::startDetached(QStringLiteral("Z:/usr/bin/xdotool"), commands)) {
        qFatal("xdotool cannot be started");
    }
}

} // namespace realinput
