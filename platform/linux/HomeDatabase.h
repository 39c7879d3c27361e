// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDeadlineTimer>
#include <QPointer>
#include <QProcess>
#include <QString>

/// A plocate database of the user's home folder, in the user's cache and readable to nobody else,
/// for systems that have no database or close it to the user. It is built in the background by
/// plocate's own updatedb, and anew when it is more than a day old.
class HomeDatabase
{
public:
    enum class State { Ready, Building, Failed };

    static QString filePath();

    /// Starts to build what is missing or outdated. An outdated database is ready all the same; a
    /// missing one is waited for, until the deadline and not for long: most homes are read by then.
    State prepare(const QDeadlineTimer &deadline);

    /// Does away with a database that plocate cannot read.
    static void discard();

private:
    void startBuilding();
    bool isBuilding() const;

    QPointer<QProcess> m_build; // belongs to the application
};
