// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class TaskRepository;

/// The task file: a compact JSON array with one object per task, in no particular order, that is
/// read at the start and rewritten whole at each change.
class TaskStorage
{
public:
    /// The absolute path of the file, which need not exist.
    explicit TaskStorage(const QString &path);

    /// Fills the repository from the file, and leaves it alone if there is none, which is no
    /// failure. False, with a warning logged, for a file that is unreadable or no JSON array.
    bool load(TaskRepository *repository) const;

    /// Replaces the file as a whole, and makes its folder. False when it could not; the old file
    /// then stays as it was.
    bool save(const TaskRepository *repository) const;

private:
    QString m_path;
};
