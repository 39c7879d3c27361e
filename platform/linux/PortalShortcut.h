// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

namespace platform {

/// A shortcut as the portal's interface GlobalShortcuts sends and receives it.
struct PortalShortcut
{
    QString id;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut);
const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut);

/// Lets Qt D-Bus send lists of shortcuts. May be called again.
void registerPortalShortcut();

/// The list in an argument that was received. Empty if it is something else.
QList<PortalShortcut> toPortalShortcuts(const QVariant &argument);

} // namespace platform

Q_DECLARE_METATYPE(platform::PortalShortcut)
