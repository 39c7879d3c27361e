// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QAccessibleWidget>

/// Makes assistive technologies get an Interface(widget, arguments…) for each Widget, in place of
/// that of Qt. Only the first call has an effect.
template <class Widget, class Interface, auto... Arguments> void installAccessible()
{
    // Qt ignores a factory that is already installed.
    QAccessible::installFactory([](const QString &, QObject *object) -> QAccessibleInterface * {
        auto *widget = qobject_cast<Widget *>(object);
        return widget ? new Interface(widget, Arguments...) : nullptr;
    });
}
