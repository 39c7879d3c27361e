// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>

/// Tells the window that a plugin would now answer its last query with other records: for rows that
/// come later, from a process or from an index that is being built. PluginManager has the one
/// object; a plugin gets it in its constructor.
class RowsChanged : public QObject
{
    Q_OBJECT

public:
    explicit RowsChanged(QObject *parent = nullptr);

    /// A plugin calls this with its command, at any time, also within query(). The signal follows
    /// in the next pass of the event loop, once for each command that was reported until then. The
    /// window answers with a query, so a plugin that calls this at each query would never come to
    /// rest.
    void report(const QString &command);

Q_SIGNALS:
    void changed(const QString &command);

private:
    void emitChanges();

    QStringList m_commands; // reported, and not yet emitted
};
