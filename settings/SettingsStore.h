// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QSettings>
#include <QString>
#include <QVariant>

/// The store of the preferences: a QSettings whose file a full disk does not empty. A value that
/// cannot be written, for want of room or to a write-protected file, is kept in memory and saved
/// with the next change.
class SettingsStore
{
public:
    SettingsStore(const QString &organization, const QString &application);

    bool contains(const QString &key) const;
    QVariant value(const QString &key, const QVariant &defaultValue = {}) const;
    void setValue(const QString &key, const QVariant &value);

    /// Saves the values that could not be written. Returns whether none is left.
    bool writeUnsaved();

private:
    QSettings m_settings;
    QHash<QString, QVariant> m_unsaved;
};
