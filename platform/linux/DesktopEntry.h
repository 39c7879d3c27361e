// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/linux/GlibPointer.h"

#include <QByteArrayList>
#include <QString>

#include <optional>

using GDesktopAppInfo = struct _GDesktopAppInfo;

namespace platform {

/// A desktop entry of type Application, read by GIO.
class DesktopEntry
{
public:
    /// Returns nothing if the file is malformed, too large or no regular file, or if the program of
    /// Exec or TryExec is not installed.
    static std::optional<DesktopEntry> load(const QString &filePath);

    /// In the user's language; empty if the entry has no name.
    QString displayName() const;

    /// A name for the icon theme or an absolute path; empty if the entry has no icon.
    QString icon() const;

    bool hasCategory(const char *category) const;

    /// Whether it is not hidden and has a command or is D-Bus activatable.
    bool canStart() const;

    /// Whether OnlyShowIn and NotShowIn admit the running desktop.
    bool isForThisDesktop() const;

    /// Whether a menu of the running desktop lists it, provided that it has a name.
    bool isListed() const;

    /// Path of the program in Exec; empty without a command.
    QByteArray program() const;

    /// Path of the program in TryExec; empty without that key.
    QByteArray tryExec() const;

    /// GIO's object, owned by this one.
    GDesktopAppInfo *info() const { return m_entry.get(); }

private:
    explicit DesktopEntry(ObjectPointer<GDesktopAppInfo> entry);

    QByteArray text(const char *key) const;

    ObjectPointer<GDesktopAppInfo> m_entry;
};

/// The names of the running desktop, the most specific one first; empty on a bare session.
QByteArrayList currentDesktops();

} // namespace platform
