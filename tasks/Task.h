// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

class QJsonObject;

/// One task of the user's list. A record with an empty id stands for a task that does not exist.
struct Task
{
    QString id;       ///< lower-case UUID without braces
    QString parentId; ///< id of the parent; empty for a top-level task
    QString title;
    QString note; ///< kept for the user, not shown
    bool completed = false;
    int priority = 0;      ///< kept, neither set nor read
    QDateTime dueTime;     ///< kept, neither set nor read
    QDateTime createdTime; ///< local time; orders siblings
    QDateTime updatedTime; ///< local time of the last change

    /// Reads one element of the task file; a missing or mistyped key gives the field's default.
    static Task fromJson(const QJsonObject &object);

    /// The element of the task file. Times are in whole seconds, empty if invalid.
    QJsonObject toJson() const;
};
