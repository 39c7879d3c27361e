// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// What the recorder program has told of its starts.
namespace recording {

/// The program, which writes a line for each start into the file that its first argument names, or
/// else beside itself.
QString program();

/// The starts that have been told in the file so far, each by the program's path, its working
/// directory and its further arguments.
QList<QStringList> starts(const QString &filePath);

} // namespace recording
