// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/StartMenu.h"

#include <QByteArray>
#include <QStringList>

namespace platform {

/// The desktop entries that the user, the desktop or the system made the default for a content
/// type, in order of preference; only those that can start. Addresses have types such as
/// "x-scheme-handler/https". Files and order follow the freedesktop.org specification "Association
/// between MIME types and applications".
QStringList defaultPrograms(const QByteArray &contentType);

/// The desktop entries that declare the content type themselves, in no particular order.
QStringList associatedPrograms(const QByteArray &contentType);

/// The file of a desktop-file id in the first start-menu folder that has one. Empty if none has, or
/// if that file is hidden, damaged or cannot start. Pass the roots when asking for many ids.
QString installedProgram(const QString &id, const QStringList &roots = startMenuRoots());

} // namespace platform
