// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QPixmap>

class QString;

/// Reads a PNG file or resource; returns null for anything else, without waiting for a pipe or a
/// device. The constructor of QPixmap would first load the plug-ins of all image formats, which
/// takes much longer than reading an icon.
QPixmap readPng(const QString &filePath);

/// Returns the icon in a file of any format that Qt reads. A PNG file is read at once, by
/// readPng().
QIcon iconOfFile(const QString &filePath);
