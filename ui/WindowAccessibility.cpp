// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WindowAccessibility.h"

#include "ui/MainWindow.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace {

QAccessibleInterface *createInterface(const QString &, QObject *object)
{
    auto *window = qobject_cast<MainWindow *>(object);
    return window ? new QAccessibleWidget(window, QAccessible::Window) : nullptr;
}

} // namespace

void installWindowAccessibility()
{
    QAccessible::installFactory(createInterface); // ignored if already installed
}
