// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The system around tst_HostileNames. Each has its own bodies.
namespace names {

extern const qsizetype leastFileNames;
extern const qsizetype updatesAtATime;

/// Whether a file can have the name.
bool isFileName(const QString &name);
/// The path as the file index has it.
QString nativePath(const QString &path);
bool isSameFile(const QString &opened, const QString &path);

/// Installs a file index with these files.
void installIndex(const QStringList &paths);

/// The names that the test tries where each takes long: for links, and for folders of an update.
QStringList startable(const QStringList &names);
QStringList updatable(const QStringList &names);

/// Installs a link of this name in the start menu to a recording program that gets the name as its
/// argument, and returns its path.
QString installLink(const QString &name);
bool isStarted(const QString &name);
/// How many starts there were.
qsizetype startCount();

/// A program that records its start.
QByteArray newProgram();
/// Whether it is at this path and has started.
bool isUpdated(const QString &program);

} // namespace names
