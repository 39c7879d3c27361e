// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/linux/GlibPointer.h"

#include <QByteArrayList>
#include <QString>

#include <optional>

using GDesktopAppInfo = struct _GDesktopAppInfo;

namespace platform {

/// A desktop entry of an application, as GIO reads it.
class DesktopEntry
{
public:
    /// Nothing for whatever is not a well-formed entry of ordinary size, or lacks the program that
    /// it starts or asks for.
    static std::optional<DesktopEntry> load(const QString &filePath);

    /// In the user's language; empty if the entry has no name.
    QString displayName() const;

    /// A name for the icon theme or an absolute path; empty if the entry has no icon.
    QString icon() const;

    bool hasCategory(const char *category) const;

    /// It is not hidden, and there is a command to start.
    bool canStart() const;

    /// Whether OnlyShowIn and NotShowIn admit the running desktop.
    bool isForThisDesktop() const;

    /// Whether a menu of this desktop would show it, if it has a name.
    bool isListed() const;

    /// Path of the program that its command starts; empty if D-Bus does that.
    QByteArray program() const;

    /// Path of the program without which it is not to be listed; empty if it names none.
    QByteArray tryExec() const;

    /// What GIO knows of it; it stays with this object.
    GDesktopAppInfo *info() const { return m_entry.get(); }

private:
    explicit DesktopEntry(ObjectPointer<GDesktopAppInfo> entry);

    QByteArray text(const char *key) const;

    ObjectPointer<GDesktopAppInfo> m_entry;
};

/// The names of the running desktop, the most specific one first; empty on a bare session.
QByteArrayList currentDesktops();

} // namespace platform
