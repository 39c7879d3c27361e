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

/// Returns the size at which to paint the icon in this space: that of its smallest picture, reduced
/// if it is larger. QIcon would fill the space with a picture for a higher factor.
QSize paintedSize(const QIcon &icon, const QSize &space);
