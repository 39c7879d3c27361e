// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FolderEntries.h"
#include "platform/LinkIcons.h"

#include <QByteArray>
#include <QFileIconProvider>
#include <QHash>
#include <QList>
#include <QPixmap>
#include <QSet>
#include <QString>
#include <QStringView>

#include <optional>
#include <utility>

class QFileInfo;

/// Creates the folder of the icon files in the temporary folder, with access for this user only,
/// and returns its path. Uses a folder in the cache of the user if that fails, if another user owns
/// or could replace it, or if there is no temporary folder. Empty if it cannot be created.
QString makeIconFolder();

/// Writes a PNG file, completely or not at all. Returns false on failure and for a null pixmap.
bool saveIcon(const QPixmap &pixmap, const QString &filePath);

/// How the icon files of a caller are drawn and named.
struct IconRules
{
    /// Prefix of the file names. Callers that scale differently need different prefixes.
    QString prefix = {};

    /// Whether an icon of another size is scaled to 32 by 32 pixels; if not, it is saved unscaled.
    bool isScaled = true;

    /// Whether to ask the shell for the icon of a path that does not exist or cannot be drawn.
    bool asksShell = false;
};

/// Draws icons into PNG files, on first request: of at most 32 by 32 pixels if they are scaled,
/// otherwise of the size that Qt or the shell returns. If they are scaled, it also draws those of
/// platform::iconFileOfFactor() for the screens with a factor above 1. The files stay for later
/// runs and are never refreshed. Use one object for one list, since it caches the icons of file
/// types.
class IconCache
{
public:
    /// Takes the folder that makeIconFolder() returned; with an empty one there are no icon files.
    explicit IconCache(const QString &folder, const IconRules &rules = {});

    /// Reads once which files there are, for a list of hundreds: asking for each takes longer.
    void listFolder();

    /// Returns the path of the icon file for a path, which is not normalised. Empty if the icon
    /// cannot be drawn or saved.
    QString iconFile(const QString &path);

    /// Returns the icon file for the absolute path of a folder entry.
    QString iconFile(const QFileInfo &entry);

private:
    QString findOrDraw(const QString &path, const QFileInfo *source);
    bool exists(const QString &file) const;
    bool draw(const QString &path, const QFileInfo &source, const QString &target, int factor);
    QIcon iconOf(const QFileInfo &source);
    bool drawIcon(const QIcon &icon, const QString &target, int factor);
    QPixmap fitted(const QPixmap &pixmap, int factor) const;

    const QString m_folder;
    const IconRules m_rules;
    const QList<int> m_factors;             // above 1, of the screens
    QList<platform::FolderEntry> m_entries; // of listFolder()
    QSet<QStringView> m_listed;             // the names in m_entries
    // Each created for the first icon that needs it.
    std::optional<platform::LinkIcons> m_links;
    std::optional<QFileIconProvider> m_provider;
    QHash<std::pair<qint64, int>, QByteArray> m_drawn; // PNG files, by the icon's key and factor
};
