// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/Task.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

QDateTime timeFromJson(const QJsonValue &value)
{
    return QDateTime::fromString(value.toString(), Qt::ISODate);
}

} // namespace

Task Task::fromJson(const QJsonObject &object)
{
    Task task;
    task.id = object.value("id"_L1).toString();
    task.parentId = object.value("parentId"_L1).toString();
    task.title = object.value("title"_L1).toString();
    task.note = object.value("note"_L1).toString();
    task.completed = object.value("completed"_L1).toBool(false);
    task.priority = object.value("priority"_L1).toInt(0);
    task.dueTime = timeFromJson(object.value("dueTime"_L1));
    task.createdTime = timeFromJson(object.value("createdTime"_L1));
    task.updatedTime = timeFromJson(object.value("updatedTime"_L1));
    return task;
}

QJsonObject Task::toJson() const
{
    return {
        {u"completed"_s, completed},
        {u"createdTime"_s, createdTime.toString(Qt::ISODate)},
        {u"dueTime"_s, dueTime.toString(Qt::ISODate)},
        {u"id"_s, id},
        {u"note"_s, note},
        {u"parentId"_s, parentId},
        {u"priority"_s, priority},
        {u"title"_s, title},
        {u"updatedTime"_s, updatedTime.toString(Qt::ISODate)},
    };
}
