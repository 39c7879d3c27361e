// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/HeldKeys.h"

namespace platform {

namespace {

using namespace std::chrono_literals;

// Longer than the delay before a held key begins to repeat.
constexpr auto longestGap = 3s;

} // namespace

bool HeldKeys::press(const QString &key, Time now)
{
    const auto last = m_lastPresses.constFind(key);
    const bool isFirst = last == m_lastPresses.cend() || now - *last > longestGap;
    m_lastPresses.insert(key, now);
    return isFirst;
}

} // namespace platform
