// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QPixmap>

class QSize;
class QString;

namespace platform {

/// Reads a PNG file or resource; returns null for anything else, without waiting for a pipe or a
/// device. The constructor of QPixmap would first load the plug-ins of all image formats, which
/// takes much longer than reading an icon.
QPixmap readPng(const QString &path);

/// Reads the icon in an image file or resource of any format that Qt reads, a PNG file as fast as
/// readPng(). Reads the files of iconFileOfFactor() too if a screen needs them. Unlike the
/// constructor of QIcon, it is safe for files of other programs: it reads nothing but regular
/// files, each through one descriptor and at once, and no image that refers to further files. Of
/// the images in one file, it reads at most 32, and none after 16 million pixels. Null if the file
/// is no such image, or has more than 16 MiB.
QIcon iconOfImageFile(const QString &path);

/// Reads an image for an icon of this size in pixels, with the same limits as iconOfImageFile(). A
/// vector image is drawn at the size; any other is reduced to it if it is larger, and is the first
/// one if the file has several. Null if the file is no such image.
QPixmap readImage(const QString &path, const QSize &size);

/// The file beside an image file that has the same image for screens of this factor, which is above
/// 1: "icon@2x.png" for "icon.png" and 2. Empty for a name without a dot. QIcon looks for files of
/// such names too.
QString iconFileOfFactor(const QString &path, int factor);

} // namespace platform
