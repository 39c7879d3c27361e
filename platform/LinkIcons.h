// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QString>

#include <memory>

namespace platform {

/// The icons that links name. QFileIconProvider would return the icon of the file type. Use one
/// object for one list: it remembers what it has read of the icon themes, and does not see what is
/// installed later.
class LinkIcons
{
public:
    LinkIcons();
    ~LinkIcons();
    LinkIcons(const LinkIcons &) = delete;
    LinkIcons &operator=(const LinkIcons &) = delete;

    /// The theme's icon for programs if the link names none that can be used. Null for a file that
    /// is no link or is damaged, and on systems where the provider returns the right icon. Links
    /// that name the same icon get one with the same QIcon::cacheKey().
    QIcon icon(const QString &filePath);

private:
    struct Memory;

    std::unique_ptr<Memory> m_memory;
};

} // namespace platform
