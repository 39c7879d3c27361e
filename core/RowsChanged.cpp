// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/RowsChanged.h"

#include <QTimer>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

RowsChanged::RowsChanged(QObject *parent)
    : QObject(parent)
{
}

void RowsChanged::report(const QString &command)
{
    if (m_commands.isEmpty()) {
        QTimer::singleShot(0ms, this, &RowsChanged::emitChanges);
    }
    if (!m_commands.contains(command)) {
        m_commands.append(command);
    }
}

void RowsChanged::emitChanges()
{
    const QStringList commands = std::exchange(m_commands, {});
    for (const QString &command : commands) {
        Q_EMIT changed(command);
    }
}
