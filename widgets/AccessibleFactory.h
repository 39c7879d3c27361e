// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QObject>

/// Makes assistive technologies get an Interface(widget, arguments…) for each Widget, in place of
/// that of Qt. Only the first call has an effect.
template <typename Widget, typename Interface, auto... Arguments> void installAccessible()
{
    // Qt ignores a factory that is already installed.
    QAccessible::installFactory([](const QString &, QObject *object) -> QAccessibleInterface * {
        auto *widget = qobject_cast<Widget *>(object);
        return widget ? new Interface(widget, Arguments...) : nullptr;
    });
}
