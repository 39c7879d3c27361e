// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QPixmap>

class QString;

namespace platform {

/// Reads a PNG file or resource; returns null for anything else, without waiting for a pipe or a
/// device. The constructor of QPixmap would first load the plug-ins of all image formats, which
/// takes much longer than reading an icon.
QPixmap readPng(const QString &path);

/// Reads the icon in an image file or resource of any format that Qt reads, a PNG file as fast as
/// readPng(). Reads the files of iconFileOfFactor() too if a screen needs them. For files of other
/// origin, unlike the constructor of QIcon: it reads nothing but regular files, each through one
/// descriptor and at once, and no image that refers to further files. Null if the file is no such
/// image, or has more than 16 MiB.
QIcon iconOfImageFile(const QString &path);

/// The file beside an image file that has the same image for screens of this factor, which is above
/// 1: "icon@2x.png" for "icon.png" and 2. Empty for a name without a dot. QIcon looks for files of
/// such names too.
QString iconFileOfFactor(const QString &path, int factor);

} // namespace platform
