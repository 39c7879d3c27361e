// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "launcher/AppEntry.h"
#include "launcher/PinnedApp.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QVariantList>

class QDir;

/// Knows what can be launched: the built-in entries, what the start menu holds, and the user's
/// pins. The catalogue is built by the constructor and stays as it is; a program that is installed
/// later is found at the next start. Nothing in the program reads the property or calls the
/// invokable functions by name.
class AppLauncher : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantList pinnedApps READ pinnedApps NOTIFY pinsChanged)

public:
    /// Scans the start menu, writes the icon files that are missing, and reads the pins, all before
    /// it returns. What cannot be read is left out silently. Without a usable pins file the
    /// calculator and the task manager are pinned.
    explicit AppLauncher(QObject *parent = nullptr);

    /// The records, with "name", "path", "desc" and "icon", of the entries that hold the trimmed
    /// query, whatever its case, in their name, their description or either of the name's pinyin
    /// forms. In the catalogue's order and without limit; a blank query yields the whole catalogue.
    Q_INVOKABLE QVariantList search(const QString &query) const;

    /// Opens a web address or a start-menu file, or starts a program without arguments. True when
    /// the start was accepted.
    Q_INVOKABLE bool launch(const QString &path);

    /// Appends a pin and writes the pins file; an empty iconPath has the icon looked up. False,
    /// with nothing changed, for an empty path or one that is pinned already.
    Q_INVOKABLE bool pinApp(const QString &path, const QString &name, const QString &iconPath);

    /// Removes a pin and writes the pins file; false when there is none.
    Q_INVOKABLE bool unpinApp(const QString &path);

    Q_INVOKABLE bool isPinned(const QString &path) const;

    /// A record with "name", "path" and "icon" for each pin, in the order of pinning.
    QVariantList pinnedApps() const;

Q_SIGNALS:
    /// The list of pins has changed and was written. A failed write is silent.
    void pinsChanged();

private:
    void loadBuiltinApps();
    void scanStartMenu();
    QStringList addPrograms(const QString &root, const QDir &folder, const QString &description,
                            QSet<QString> *seenNames);
    QString extractIcon(const QString &path) const;
    bool loadPins();
    void savePins() const;
    static QString pinsFilePath();

    QList<AppEntry> m_apps;
    QString m_iconCacheDir; // empty where it cannot be made
    QList<PinnedApp> m_pinnedApps;
};
