// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StartMenu.h"

namespace platform {
QStringList startMenuRoots()
{
    return {};
}
QString startMenuPattern()
{
    return QStringLiteral("*.desktop");
}
std::optional<QString> startMenuName(const QString &, const QString &)
{
    return {};
}
} // namespace platform
