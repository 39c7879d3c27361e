// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/linux/GlibPointer.h"

#include <QByteArrayList>
#include <QString>

#include <optional>

namespace platform {

/// A desktop entry, read by GLib's key file parser and understood the way GDesktopAppInfo does it.
/// Each start of the program reads hundreds of them. GDesktopAppInfo takes five times as long, and
/// its first object watches the configuration folders from a thread until the process ends.
class DesktopEntry
{
public:
    /// Nothing for whatever is not a well-formed file of ordinary size.
    static std::optional<DesktopEntry> load(const QString &filePath);

    /// In the user's language; empty if the entry has no name.
    QString displayName() const;

    /// A name for the icon theme or an absolute path; empty if the entry has no icon.
    QString icon() const;

    bool hasCategory(const char *category) const;

    /// An application that is neither hidden nor lacks its program or its TryExec.
    bool canStart() const;

    /// Whether OnlyShowIn and NotShowIn admit the running desktop.
    bool isForThisDesktop() const;

    /// Whether a menu of this desktop would show it, if it has a name.
    bool isListed() const;

    /// The parsed file, for changes before a start; it stays with this object.
    GKeyFile *keyFile() const { return m_keyFile.get(); }

private:
    explicit DesktopEntry(KeyFilePointer keyFile);

    bool hasKey(const char *key) const;
    bool isTrue(const char *key) const;
    QByteArray text(const char *key) const;
    QString localizedText(const char *key) const;
    bool listContains(const char *key, const char *wanted) const;
    bool isApplication() const;
    bool isCommandInstalled() const;

    KeyFilePointer m_keyFile;
};

/// The names of the running desktop, the most specific one first; empty on a bare session.
QByteArrayList currentDesktops();

} // namespace platform
