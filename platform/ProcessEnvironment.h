// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace platform {

/// Call before QApplication. Selects X11, where global hotkeys and window positions work, unless
/// the user set QT_QPA_PLATFORM.
void chooseWindowSystem();

/// Call after QApplication has read its environment. Unsets the variables that were meant for this
/// process alone, such as startup tokens, so that started programs do not inherit them.
void unsetPrivateVariables();

/// While it exists, a new application object uses the platform "offscreen", since there may be no
/// X11 or Wayland session. Does nothing on Windows.
class WithoutWindowSystem
{
public:
    WithoutWindowSystem();
    ~WithoutWindowSystem();
    Q_DISABLE_COPY_MOVE(WithoutWindowSystem)

private:
    QByteArray m_windowSystem; // the user's QT_QPA_PLATFORM; null if it is not set
};

} // namespace platform
