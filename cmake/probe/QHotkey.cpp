// SPDX-License-Identifier: GPL-3.0-or-later
#include <QGuiApplication>
#include <QHotkey>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QHotkey fixed(QKeySequence(Qt::CTRL | Qt::Key_F12), true, &app);
    QHotkey changing(&app);
    QObject::connect(&fixed, &QHotkey::activated, &app, &QGuiApplication::quit);
    changing.setRegistered(false);
    return changing.setShortcut(fixed.shortcut(), true) == fixed.isRegistered() ? 0 : 1;
}
