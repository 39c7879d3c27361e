// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "launcher/AppEntry.h"
#include "launcher/PinnedApp.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantList>

/// Finds and launches programs. The catalogue has the built-in entries and those of the start menu;
/// the constructor builds it, and a program that is installed later appears at the next start. Also
/// keeps the pins of the user. Nothing in the program reads the property or calls the invokable
/// functions by name.
class AppLauncher : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantList pinnedApps READ pinnedApps NOTIFY pinsChanged)

public:
    /// Scans the start menu, draws the missing icon files and loads the pins before it returns.
    /// Skips silently what cannot be read. Without a valid pins file it pins the calculator and the
    /// task manager.
    explicit AppLauncher(QObject *parent = nullptr);

    /// Returns records with "name", "path", "desc" and "icon" for the entries whose name,
    /// description, pinyin or pinyin initials contain the trimmed query; case does not matter. They
    /// have the order of the catalogue and no limit. A blank query returns the whole catalogue.
    Q_INVOKABLE QVariantList search(const QString &query) const;

    /// Opens a web address or a start-menu file, or starts a program without arguments. Returns
    /// whether the system accepted it.
    Q_INVOKABLE bool launch(const QString &path);

    /// Appends a pin and writes the pins file; draws the icon if iconPath is empty. Returns false,
    /// and changes nothing, if the path is empty or already pinned.
    Q_INVOKABLE bool pinApp(const QString &path, const QString &name, const QString &iconPath);

    /// Removes a pin and writes the pins file. Returns false if there is no such pin.
    Q_INVOKABLE bool unpinApp(const QString &path);

    Q_INVOKABLE bool isPinned(const QString &path) const;

    /// The text with which the description of each program of the start menu begins, in the
    /// language of Vaskel.
    static QString startMenuText();

    /// Whether there was no pins file when the launcher was created: the user starts the program
    /// for the first time.
    bool isFirstStart() const { return m_isFirstStart; }

    /// The pins as records with "name", "path" and "icon", in the order of pinning.
    QVariantList pinnedApps() const;

Q_SIGNALS:
    /// The pins have changed. They have been written to their file; a failure to do so is only
    /// logged.
    void pinsChanged();

private:
    struct Scan;

    void loadBuiltinApps(Scan *scan);
    void scanStartMenu(Scan *scan);
    QStringList addPrograms(const QString &root, const QString &folder, const QString &description,
                            Scan *scan);
    QString extractIcon(const QString &path) const;
    bool loadPins();
    void savePins() const;
    static QString pinsFilePath();

    QList<AppEntry> m_apps;
    QString m_iconCacheDir; // empty if it cannot be created
    QList<PinnedApp> m_pinnedApps;
    bool m_isFirstStart = false;
};
