// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/TestHome.h"

#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

/// Reads the task file on the disk without the code under test.
namespace taskfile {

inline QString path()
{
    return testhome::appDataPath() + QStringLiteral("/todo.json");
}

inline void write(const QByteArray &content)
{
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write the task file");
    }
}

/// The bytes of the file; null if it does not exist.
inline QByteArray bytes()
{
    QFile file(path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The objects of the file by title.
inline QHash<QString, QJsonObject> tasksByTitle()
{
    QHash<QString, QJsonObject> tasks;
    const QJsonArray array = QJsonDocument::fromJson(bytes()).array();
    for (const auto &value : array) {
        const QJsonObject task = value.toObject();
        tasks.insert(task.value(QStringLiteral("title")).toString(), task);
    }
    return tasks;
}

} // namespace taskfile
