// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskStorage.h"

#include "platform/FileReplacement.h"
#include "platform/RegularFile.h"
#include "tasks/TaskRepository.h"

#include <QDebug>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

TaskStorage::TaskStorage(const QString &path)
    : m_path(path)
{
}

bool TaskStorage::load(TaskRepository *repository) const
{
    QFile file(m_path);
    if (!file.exists()) {
        qDebug() << "Task storage not found, starting fresh:" << m_path;
        return true;
    }
    if (!platform::openRegularFile(file)) {
        qWarning() << "Cannot open task storage:" << m_path;
        return false;
    }

    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    file.close();
    if (!document.isArray()) {
        qWarning() << "Invalid task storage format:" << error.errorString();
        return false;
    }

    repository->fromJson(document.array());
    qDebug() << "Loaded" << repository->allTasks().size() << "tasks from" << m_path;
    return true;
}

bool TaskStorage::save(const TaskRepository *repository) const
{
    const QByteArray json = QJsonDocument(repository->toJson()).toJson(QJsonDocument::Compact);
    if (!platform::replaceFile(m_path, json)) {
        qWarning() << "Cannot write task storage:" << m_path;
        return false;
    }
    return true;
}
