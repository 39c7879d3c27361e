// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/RunningProcess.h"

#include <QFile>

bool isRunning(qint64 process)
{
    QFile status(QStringLiteral("/proc/%1/stat").arg(process));
    return status.open(QIODevice::ReadOnly) && !status.readAll().contains(") Z ");
}
