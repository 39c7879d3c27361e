// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>

class QPlatformScreen;

namespace windowtest {

/// Another screen beside that of the offscreen platform, during its lifetime. New windows are on
/// the primary one. The size is in device pixels; the position is the same in device-independent
/// ones.
class FakeScreen
{
public:
    explicit FakeScreen(const QRect &geometry, bool isPrimary = false, qreal factor = 1);
    ~FakeScreen();
    Q_DISABLE_COPY_MOVE(FakeScreen)

    /// Sets the part without panels; at first, it is the whole screen.
    void setAvailableGeometry(const QRect &available);

private:
    QPlatformScreen *m_screen;
};

} // namespace windowtest
