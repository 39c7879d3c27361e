// SPDX-License-Identifier: GPL-3.0-or-later
#include "compat/windows/RealInput.h"

#include <QProcess>

namespace realinput {

void send(const QStringList &commands)
{
    // A program of the machine below wine, which starts it but gives no handle of it.
    if (!QProcess::startDetached(QStringLiteral("Z:/usr/bin/xdotool"), commands)) {
        qFatal("xdotool cannot be started");
    }
}

} // namespace realinput
