// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

/// While it exists, this process can make no file larger than this many bytes: a write fails as on
/// a full disk. Does nothing on Windows.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(qint64 bytes);
    // Trivial on Windows alone. NOLINTNEXTLINE(performance-trivially-destructible)
    ~FileSizeLimit();

private:
    Q_DISABLE_COPY_MOVE(FileSizeLimit)
};
