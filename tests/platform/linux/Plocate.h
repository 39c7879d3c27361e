// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/TestHome.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QString>

/// A separate system for the file index: scripts around this machine's plocate and updatedb use a
/// system database in the test's home.
namespace plocate {

inline QString folder()
{
    return testhome::path() + QStringLiteral("/plocate");
}

inline QString systemDatabase()
{
    return folder() + QStringLiteral("/system.db");
}

inline QString program(const QString &name)
{
    const QStringList folders = {QStringLiteral("/usr/bin"), QStringLiteral("/usr/sbin")};
    return QStandardPaths::findExecutable(name, folders);
}

inline void writeScript(const QString &name, const QByteArray &lines)
{
    const QString path =
        testhome::writeFile(QStringLiteral("plocate/bin/") + name, "#!/bin/sh\n" + lines + '\n');
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

inline void replaceProgram(const QByteArray &lines)
{
    writeScript(QStringLiteral("plocate"), lines);
}

inline void replaceUpdater(const QByteArray &lines)
{
    writeScript(QStringLiteral("updatedb.plocate"), lines);
}

inline QByteArray realProgram()
{
    return "[ \"$1\" = --database ] || set -- --database '" + QFile::encodeName(systemDatabase())
           + "' \"$@\"\nexec " + QFile::encodeName(program(QStringLiteral("plocate"))) + " \"$@\"";
}

inline QByteArray realUpdater()
{
    return "exec " + QFile::encodeName(program(QStringLiteral("updatedb.plocate"))) + " \"$@\"";
}

/// Makes the updater run these lines only after releaseUpdater().
inline void holdUpdater(const QByteArray &lines)
{
    replaceUpdater("while [ ! -e '" + QFile::encodeName(folder())
                   + "/go' ]; do /bin/sleep 0.05; done\n" + lines);
}

inline void releaseUpdater()
{
    testhome::writeFile(QStringLiteral("plocate/go"), {});
}

/// Removes plocate, so that the system has no index of files.
inline void remove()
{
    QFile::remove(folder() + QStringLiteral("/bin/plocate"));
    qputenv("PATH", QFile::encodeName(folder()) + "/bin");
    qunsetenv("LOCATE_PATH");
}

/// Ends the build of an earlier case: the next search would wait for it and not begin another.
inline void endBuild()
{
    const auto builds = QCoreApplication::instance()->findChildren<QProcess *>();
    for (QProcess *build : builds) {
        build->kill();
        build->waitForFinished();
    }
    QCoreApplication::processEvents(); // it may have been complete
}

/// Installs the real index without a system database.
inline void install()
{
    endBuild();
    if (program(QStringLiteral("plocate")).isEmpty()) {
        qFatal("plocate is not installed");
    }
    replaceProgram(realProgram());
    replaceUpdater(realUpdater());
    qputenv("PATH", QFile::encodeName(folder()) + "/bin");
    qunsetenv("LOCATE_PATH");
}

/// Builds the system database from the test's home.
inline void updateSystemDatabase()
{
    const int status = QProcess::execute(
        program(QStringLiteral("updatedb.plocate")),
        {QStringLiteral("-l"), QStringLiteral("0"), QStringLiteral("--prunepaths"), QString(),
         QStringLiteral("--prune-bind-mounts"), QStringLiteral("no"), QStringLiteral("-o"),
         systemDatabase(), QStringLiteral("-U"), testhome::path()});
    if (status != 0) {
        qFatal("updatedb failed");
    }
}

} // namespace plocate
