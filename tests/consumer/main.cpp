// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/PluginManager.h"

#include <QGuiApplication>
#include <QIcon>

#include <cstdio>

int main(int argc, char *argv[])
{
    const QGuiApplication app(argc, argv);

    const PluginManager plugins(nullptr);
    if (!plugins.commands().isEmpty()) {
        std::puts("A plugin manager without plugins has commands.");
        return 1;
    }
    if (QIcon(QStringLiteral(":/assets/icon.png")).availableSizes().isEmpty()) {
        std::puts("The library's resources did not come with it.");
        return 1;
    }
    return 0;
}
