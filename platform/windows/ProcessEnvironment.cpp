// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessEnvironment.h"

#include <QByteArray>
#include <QtEnvironmentVariables>

namespace platform {

void chooseWindowSystem() {}

// Windows sets no variables for a single process, but startUpdateScript() does.
void unsetPrivateVariables()
{
    constexpr const char *name = "NoDefaultCurrentDirectoryInExePath";
    if (qgetenv(name) == "Vaskel") {
        qunsetenv(name);
    }
}

WithoutWindowSystem::WithoutWindowSystem() = default;
WithoutWindowSystem::~WithoutWindowSystem() = default;

} // namespace platform
