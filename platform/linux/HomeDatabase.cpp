// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/HomeDatabase.h"

#include "platform/PrivateFolder.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>
#include <utility>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr qint64 lifetime = 24 * 60 * 60; // seconds
constexpr qint64 patience = 1000;         // milliseconds
constexpr int lowestPriority = 19;

QString folderPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
}

// System folders are seldom in a user's PATH. Debian's name comes first, since "updatedb" may
// belong to another package there.
QString updater()
{
    const QStringList systemFolders = {u"/usr/local/sbin"_s, u"/usr/sbin"_s, u"/sbin"_s};
    for (const QString &name : {u"updatedb.plocate"_s, u"updatedb"_s}) {
        QString program = QStandardPaths::findExecutable(name);
        if (program.isEmpty()) {
            program = QStandardPaths::findExecutable(name, systemFolders);
        }
        if (!program.isEmpty()) {
            return program;
        }
    }
    return {};
}

// updatedb makes the file readable for the user's group, whatever the umask. Returns false if there
// is no file.
bool makePrivate()
{
    return QFile::setPermissions(HomeDatabase::filePath(), QFile::ReadOwner | QFile::WriteOwner);
}

bool isFresh(const QFileInfo &database)
{
    const qint64 age = database.lastModified().secsTo(QDateTime::currentDateTime());
    return database.exists() && age >= 0 && age < lifetime;
}

} // namespace

QString HomeDatabase::filePath()
{
    return folderPath() + "/home.plocate"_L1;
}

HomeDatabase::State HomeDatabase::prepare(const QDeadlineTimer &deadline)
{
    const QFileInfo database(filePath());
    if (!isFresh(database) && !isBuilding()) {
        startBuilding();
        if (!database.exists()) {
            m_build->waitForFinished(
                static_cast<int>(std::min(patience, deadline.remainingTime())));
        }
    }
    m_isAwaited = !makePrivate() && isBuilding();
    if (m_isAwaited) {
        return State::Building;
    }
    // Ask again: the build may have ended after the first makePrivate().
    return makePrivate() ? State::Ready : State::Failed;
}

void HomeDatabase::watch(QObject *context, const std::function<void()> &completed)
{
    m_watchers.removeIf([](const auto &watcher) { return !watcher.first; });
    m_watchers.append({context, completed});
}

void HomeDatabase::discard()
{
    QFile::remove(filePath());
}

void HomeDatabase::startBuilding()
{
    delete m_build;
    m_build = new QProcess(QCoreApplication::instance());
    if (!makePrivateFolder(folderPath())) {
        return;
    }
    QProcess *build = m_build;
    build->setStandardInputFile(QProcess::nullDevice());
    build->setStandardOutputFile(QProcess::nullDevice());
    build->setStandardErrorFile(QProcess::nullDevice());
    build->setChildProcessModifier(
        [] { [[maybe_unused]] const int priority = ::nice(lowestPriority); });
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, build, [build] {
        build->kill();
        build->waitForFinished();
    });
    QObject::connect(build, &QProcess::finished, build, [this] { finishBuilding(); });
    // The exclusions of updatedb.conf are meant for the system's database. Index the home even if
    // it is a bind mount or below a temporary folder.
    build->start(updater(), {u"--require-visibility"_s, u"0"_s, u"--prunepaths"_s, QString(),
                             u"--prune-bind-mounts"_s, u"no"_s, u"--output"_s, filePath(),
                             u"--database-root"_s, QDir::homePath()});
}

bool HomeDatabase::isBuilding() const
{
    // The event loop may not have noticed the end of the process yet.
    return m_build && m_build->state() != QProcess::NotRunning && !m_build->waitForFinished(0);
}

void HomeDatabase::finishBuilding()
{
    // Do not notify of a failed build: the watcher's search would start the next one, without end.
    if (!m_isAwaited || !QFile::exists(filePath())) {
        return;
    }
    // Notify from the event loop: isBuilding() may end the process within a search, which must not
    // be repeated while it runs.
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [this] { notifyWatchers(); }, Qt::QueuedConnection);
}

void HomeDatabase::notifyWatchers()
{
    if (!std::exchange(m_isAwaited, false)) {
        return;
    }
    const auto watchers = m_watchers;
    for (const auto &[context, completed] : watchers) {
        if (context) {
            completed();
        }
    }
}

} // namespace platform
