// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileIconProvider>
#include <QPixmap>
#include <QString>

#include <optional>

class QFileInfo;

/// Makes the folder of the icon files below the temporary folder and closes it to other users.
/// Where another user has it already, it is one in the user's cache. Empty when it cannot be made.
QString makeIconFolder();

/// Writes a PNG file, whole or not at all. False for a null pixmap too.
bool saveIcon(const QPixmap &pixmap, const QString &filePath);

/// In what the icon files of one caller differ from those of another.
struct IconRules
{
    /// Begins the name of each file, so that callers whose rules differ share no file.
    QString prefix = {};

    /// Whether an icon of another size is scaled to the square, or saved as it was drawn.
    bool isScaled = true;

    /// Whether the shell is asked for what does not exist, and for what could not be drawn.
    bool asksShell = false;
};

/// The icon files: PNG files of at most 32 by 32 pixels. One is drawn when it is first asked for,
/// is kept across runs and never refreshed. An object serves one run through a list, since it keeps
/// the icons of the kinds of files.
class IconCache
{
public:
    /// The folder as makeIconFolder() gave it; without one no icon file is read or written.
    explicit IconCache(const QString &folder, const IconRules &rules = {});

    /// The path of the icon file for a path, which is compared as it stands. Empty when the icon
    /// cannot be drawn or saved.
    QString iconFile(const QString &path);

    /// The icon file for the absolute path of an entry of a folder.
    QString iconFile(const QFileInfo &entry);

private:
    QString findOrDraw(const QString &path, const QFileInfo &source);
    bool draw(const QString &path, const QFileInfo &source, const QString &target);
    QPixmap pixmapOf(const QFileInfo &source);
    bool save(const QPixmap &pixmap, const QString &target) const;

    const QString m_folder;
    const IconRules m_rules;
    std::optional<QFileIconProvider> m_provider; // made for the first icon that is drawn
};
