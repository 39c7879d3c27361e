// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/StartMenu.h"

#include <QByteArray>
#include <QStringList>

namespace platform {

/// The desktop entries that the user, the desktop or the system has chosen for a content type, the
/// first choice first; only those that can start. Addresses have types such as
/// "x-scheme-handler/https". The files and their order are those of the freedesktop.org standard
/// "Association between MIME types and applications".
QStringList chosenPrograms(const QByteArray &contentType);

/// The desktop entries that merely say of themselves that they open the type, in no telling order.
QStringList associatedPrograms(const QByteArray &contentType);

/// The file of a desktop-file id in the first start-menu folder that has one; empty if there is
/// none, or if that one is hidden, damaged or cannot start. Whoever asks for many at a time gives
/// the folders.
QString installedProgram(const QString &id, const QStringList &roots = startMenuRoots());

} // namespace platform
