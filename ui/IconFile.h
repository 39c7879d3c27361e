// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QSize>

class QString;

/// Reads a PNG file or resource; returns null for anything else, without waiting for a pipe or a
/// device. The constructor of QPixmap would first load the plug-ins of all image formats, which
/// takes much longer than reading an icon.
QPixmap readPng(const QString &filePath);

/// Returns the icon in a file of any format that Qt reads. A PNG file is read at once, by
/// readPng(), together with the "@2x" and "@3x" files beside it if a screen needs them.
QIcon iconOfFile(const QString &filePath);

/// The size in which to paint the icon in this space: that of its picture for a factor of 1,
/// reduced if it is larger. QIcon would enlarge the pictures of higher factors to fill the space.
QSize paintedSize(const QIcon &icon, const QSize &space);
