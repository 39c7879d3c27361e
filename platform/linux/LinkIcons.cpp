// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/LinkIcons.h"

#include "platform/ImageFile.h"
#include "platform/Link.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/ThemeIcons.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// A QIcon is not null even if its file is damaged or no plug-in reads the format.
bool canBeDrawn(const QIcon &icon)
{
    return !icon.pixmap(QSize(32, 32), 1.0).isNull();
}

// A name with a slash that is no absolute path would leave the folders of the theme.
QIcon iconOf(const QString &name, ThemeIcons &theme)
{
    if (name.startsWith(u'/')) {
        return iconOfImageFile(name);
    }
    return name.contains(u'/') ? QIcon() : theme.icon(name);
}

} // namespace

struct LinkIcons::Memory
{
    ThemeIcons theme;
    QHash<QString, QIcon> icons = {}; // by the name in the file; those that can be drawn
};

LinkIcons::LinkIcons()
    : m_memory(std::make_unique<Memory>())
{
}

LinkIcons::~LinkIcons() = default;

QIcon LinkIcons::icon(const QString &filePath)
{
    if (!isLink(filePath)) {
        return {};
    }
    const std::optional<DesktopEntry> entry = DesktopEntry::load(filePath);
    if (!entry) {
        return {};
    }
    const QString name = entry->icon();
    const auto known = m_memory->icons.constFind(name);
    if (known != m_memory->icons.cend()) {
        return *known;
    }
    QIcon icon = name.isEmpty() ? QIcon() : iconOf(name, m_memory->theme);
    if (icon.isNull() || !canBeDrawn(icon)) {
        icon = m_memory->theme.icon(u"application-x-executable"_s);
    }
    return *m_memory->icons.insert(name, icon);
}

} // namespace platform
