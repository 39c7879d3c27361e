// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QPixmap>

class QString;

/// The picture in a PNG file or resource; null for any other file. Unlike the constructor of
/// QPixmap, it does not first load Qt's plug-ins for all other formats, which takes much longer
/// than reading an icon.
QPixmap readPng(const QString &filePath);

/// The icon that QIcon makes of the file. A PNG file, as all icon files are, is read at once.
QIcon iconOfFile(const QString &filePath);
