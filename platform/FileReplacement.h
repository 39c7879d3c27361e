// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QByteArray;
class QString;

namespace platform {

/// Makes the bytes the whole content of a file, and creates the folder if it is missing. Returns
/// false, and leaves the old file as it is, if the new one cannot be written completely, such as on
/// a full disk; a program that is killed meanwhile leaves the old or the new file. A symbolic link
/// stays, and its target is replaced. A new file has the permissions of the umask, any other keeps
/// its own.
bool replaceFile(const QString &path, const QByteArray &content);

} // namespace platform
