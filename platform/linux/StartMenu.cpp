// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StartMenu.h"

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/DesktopFileId.h"

#include <QDir>
#include <QStandardPaths>

#include <algorithm>

namespace platform {

namespace {

bool isOverridden(const QString &root, const QString &filePath)
{
    const QStringList roots = startMenuRoots();
    const auto end = std::find(roots.begin(), roots.end(), root);
    return std::any_of(roots.begin(), end, [&](const QString &earlierRoot) {
        return !fileOfId(earlierRoot, desktopFileId(root, filePath)).isEmpty();
    });
}

} // namespace

QStringList startMenuRoots()
{
    QStringList roots = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    std::transform(roots.begin(), roots.end(), roots.begin(), &QDir::cleanPath);
    roots.removeDuplicates();
    return roots;
}

QString startMenuPattern()
{
    return QStringLiteral("*.desktop");
}

std::optional<QString> startMenuName(const QString &root, const QString &filePath)
{
    if (isOverridden(root, filePath)) {
        return std::nullopt;
    }
    const std::optional<DesktopEntry> entry = DesktopEntry::load(filePath);
    if (!entry || !entry->isListed()) {
        return std::nullopt;
    }
    const QString name = entry->displayName();
    return name.isEmpty() ? std::nullopt : std::optional(name);
}

} // namespace platform
