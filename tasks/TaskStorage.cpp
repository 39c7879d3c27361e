// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskStorage.h"

#include "platform/RegularFile.h"
#include "tasks/TaskRepository.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

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
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    QSaveFile file(m_path);
    const QByteArray json = QJsonDocument(repository->toJson()).toJson(QJsonDocument::Compact);
    // On a full disk, write() may only report fewer bytes, and commit() ignores a failed flush.
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size() || !file.flush()
        || !file.commit()) {
        qWarning() << "Cannot write task storage:" << m_path;
        return false;
    }
    return true;
}
