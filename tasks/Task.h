// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

class QJsonObject;

/// One task of the user's list. An empty id means that the task does not exist.
struct Task
{
    QString id;       ///< lower-case UUID without braces
    QString parentId; ///< empty for a top-level task
    QString title;
    QString note; ///< stored but not shown
    bool completed = false;
    int priority = 0;      ///< stored but neither set nor read
    QDateTime dueTime;     ///< stored but neither set nor read
    QDateTime createdTime; ///< local time; orders siblings
    QDateTime updatedTime; ///< local time of the last change

    /// Reads one element of the task file; a missing or mistyped key gives the field's default.
    static Task fromJson(const QJsonObject &object);

    /// Returns an element of the task file. Times have whole seconds and are empty if invalid.
    QJsonObject toJson() const;
};
