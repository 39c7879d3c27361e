// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskRepository.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

#include <algorithm>

namespace {

bool isOlder(const Task &a, const Task &b)
{
    if (a.createdTime != b.createdTime) {
        return a.createdTime < b.createdTime;
    }
    return a.id < b.id;
}

} // namespace

TaskRepository::TaskRepository(QObject *parent)
    : QObject(parent)
{
}

TaskRepository::~TaskRepository() = default;

void TaskRepository::addTask(const Task &task)
{
    m_tasks.insert(task.id, task);
    Q_EMIT taskAdded(task.id);
}

void TaskRepository::removeTask(const QString &id)
{
    if (!m_tasks.contains(id)) {
        return;
    }
    const QStringList below = descendants(id);
    for (const QString &descendant : below) {
        m_tasks.remove(descendant);
    }
    m_tasks.remove(id);
    Q_EMIT taskRemoved(id);
}

void TaskRepository::updateTask(const Task &task)
{
    const auto stored = m_tasks.find(task.id);
    if (stored == m_tasks.end()) {
        return;
    }
    *stored = task;
    Q_EMIT taskUpdated(task.id);
}

bool TaskRepository::contains(const QString &id) const
{
    return m_tasks.contains(id);
}

Task TaskRepository::task(const QString &id) const
{
    return m_tasks.value(id);
}

QList<Task> TaskRepository::children(const QString &parentId) const
{
    QList<Task> siblings;
    for (const Task &task : m_tasks) {
        if (task.parentId == parentId) {
            siblings.append(task);
        }
    }
    std::stable_sort(siblings.begin(), siblings.end(), isOlder);
    return siblings;
}

TaskGroups TaskRepository::childrenByParent() const
{
    TaskGroups groups;
    for (const Task &task : m_tasks) {
        groups[task.parentId].append(&task);
    }
    for (QList<const Task *> &siblings : groups) {
        std::stable_sort(siblings.begin(), siblings.end(),
                         [](const Task *a, const Task *b) { return isOlder(*a, *b); });
    }
    return groups;
}

QStringList TaskRepository::descendants(const QString &id) const
{
    const TaskGroups groups = childrenByParent();
    QStringList found;
    // Iterative, since a long chain of children could exhaust the stack.
    QStringList pending{id};
    while (!pending.isEmpty()) {
        const QString current = pending.takeLast();
        if (current != id) {
            found.append(current);
        }
        const QList<const Task *> children = groups.value(current);
        for (auto child = children.crbegin(); child != children.crend(); ++child) {
            // In a cycle of parents the task is among its own descendants; skip it.
            if ((*child)->id != id) {
                pending.append((*child)->id);
            }
        }
    }
    return found;
}

QList<Task> TaskRepository::allTasks() const
{
    return m_tasks.values();
}

int TaskRepository::depth(const QString &id) const
{
    QSet<QString> path;
    for (QString current = id; !current.isEmpty() && !path.contains(current);
         current = task(current).parentId) {
        path.insert(current);
    }
    return int(path.size());
}

void TaskRepository::fromJson(const QJsonArray &array)
{
    m_tasks.clear();
    for (const auto &element : array) {
        const Task task = Task::fromJson(element.toObject());
        if (!task.id.isEmpty()) {
            m_tasks.insert(task.id, task);
        }
    }
}

QJsonArray TaskRepository::toJson() const
{
    QJsonArray array;
    for (const Task &task : m_tasks) {
        array.append(task.toJson());
    }
    return array;
}
