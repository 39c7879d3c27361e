// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FirstStart.h"

#include <QCoreApplication>
#include <QKeySequence>

QString firstStartMessage(const QString &hotkey, HotkeyState state)
{
    QString message;
    if (state == HotkeyState::Registered) {
        message = QCoreApplication::translate(
            "Main", "Press %1 to show or hide the window. You can change this hotkey on the "
                    "settings page: click this icon with the right button.");
    } else if (state == HotkeyState::Held) {
        message = QCoreApplication::translate(
            "Main", "The hotkey %1 is held by another program. You can choose another one on the "
                    "settings page: click this icon with the right button.");
    }
    const QKeySequence sequence(hotkey, QKeySequence::PortableText);
    return message.isEmpty() ? QString() : message.arg(sequence.toString(QKeySequence::NativeText));
}
