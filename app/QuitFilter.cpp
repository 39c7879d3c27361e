// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/QuitFilter.h"

#include <QCoreApplication>
#include <QEvent>

bool QuitFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Quit && watched == QCoreApplication::instance()) {
        QCoreApplication::exit(0);
        return true;
    }
    return QObject::eventFilter(watched, event);
}
