// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class TaskRepository;

/// The task file: a compact JSON array with one object per task, in no particular order. Loaded
/// once at the start and rewritten at each change.
class TaskStorage
{
public:
    /// The path is absolute; the file need not exist.
    explicit TaskStorage(const QString &path);

    /// Loads the file into the repository. Returns true and changes nothing if there is no file.
    /// Returns false and logs a warning if it is unreadable or no JSON array.
    bool load(TaskRepository *repository) const;

    /// Replaces the file and creates its folder. Returns false and keeps the old file on failure.
    bool save(const TaskRepository *repository) const;

private:
    QString m_path;
};
