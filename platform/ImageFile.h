// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

class QString;

namespace platform {

/// Reads the icon in an image file or resource of any format that Qt reads, with the "@2x" and
/// "@3x" files beside it. For files of other origin, unlike the constructor of QIcon: it reads
/// nothing but regular files, each through one descriptor and at once, and no image that refers to
/// further files. Null if the file is no such image, or has more than 16 MiB.
QIcon iconOfImageFile(const QString &path);

} // namespace platform
