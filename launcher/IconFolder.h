// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPixmap>
#include <QString>

class QFileIconProvider;
class QFileInfo;

/// The folder of the icon files, which are PNG files that are kept across runs and never refreshed.

/// Makes the folder below the temporary folder and closes it to other users. Where somebody else
/// has it already, it is one in the user's cache. Empty when it cannot be made: then no icon file
/// is read or written.
QString makeIconFolder();

/// The base name of the icon file of a path: the same in every run, different for each spelling.
QString iconKey(const QString &path);

/// The side of the square that a picture is drawn for, in pixels.
inline constexpr int iconSize = 32;

/// The picture of a file for that square: the icon that a start-menu file names for itself, else
/// that of its kind. All callers take it here, since the picture that one keeps serves the others.
QPixmap filePixmap(const QFileInfo &file, const QFileIconProvider &provider);

/// Writes a PNG file, whole or not at all.
bool saveIcon(const QPixmap &pixmap, const QString &filePath);

/// Writes it as large as fits the square. False for a null pixmap too.
bool saveScaledIcon(const QPixmap &pixmap, const QString &filePath);
