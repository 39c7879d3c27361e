// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/PaletteWatcher.h"

#include <QEvent>
#include <QWidget>

PaletteWatcher::PaletteWatcher(QWidget *widget)
    : QObject(widget)
{
    widget->installEventFilter(this);
}

bool PaletteWatcher::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::PaletteChange) {
        Q_EMIT paletteChanged();
    }
    return QObject::eventFilter(watched, event);
}
