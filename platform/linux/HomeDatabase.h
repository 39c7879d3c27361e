// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDeadlineTimer>
#include <QList>
#include <QPointer>
#include <QProcess>
#include <QString>

#include <functional>
#include <utility>

namespace platform {

/// A plocate database of the user's home folder, in the user's cache and readable by the user
/// alone. Replaces the system's database where there is none or the user may not read it. updatedb
/// builds it in the background, and again when it is more than a day old.
class HomeDatabase
{
public:
    enum class State { Ready, Building, Failed };

    static QString filePath();

    /// Starts a build if the database is missing or outdated. An outdated database counts as ready.
    /// Waits for a missing one until the deadline, but at most a second: most homes take less.
    State prepare(const QDeadlineTimer &deadline);

    /// Calls back when a build is complete if the last call of prepare() has returned Building, as
    /// long as the context lives. Does not call back for a build that fails.
    void watch(QObject *context, const std::function<void()> &completed);

    /// Deletes a database that plocate cannot read.
    static void discard();

private:
    void startBuilding();
    bool isBuilding() const;
    void finishBuilding();
    void notifyWatchers();

    QPointer<QProcess> m_build; // owned by the application
    bool m_isAwaited = false;   // by the last search, which found no database
    QList<std::pair<QPointer<QObject>, std::function<void()>>> m_watchers;
};

} // namespace platform
