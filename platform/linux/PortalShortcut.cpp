// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/PortalShortcut.h"

#include <QDBusMetaType>

using namespace Qt::StringLiterals;

namespace platform {

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

void registerPortalShortcut()
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
}

QList<PortalShortcut> toPortalShortcuts(const QVariant &argument)
{
    // Reading anything else would print warnings.
    const auto received = argument.value<QDBusArgument>();
    if (received.currentSignature() != "a(sa{sv})"_L1) {
        return {};
    }
    return qdbus_cast<QList<PortalShortcut>>(received);
}

} // namespace platform
