// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>

#include <chrono>

namespace platform {

/// Tells the first press of a key from the repetitions while it is held.
class HeldKeys
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// Whether this is the first press. A press long after the last one is, too, since a release
    /// may get lost.
    bool press(const QString &key, Time now);

    void release(const QString &key) { m_lastPresses.remove(key); }
    void releaseAll() { m_lastPresses.clear(); }

private:
    QHash<QString, Time> m_lastPresses;
};

} // namespace platform
