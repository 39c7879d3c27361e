// SPDX-License-Identifier: GPL-3.0-or-later
//
// The least that a program with a window can be: what starting one costs without any launcher.
#include <QApplication>
#include <QWidget>

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    QWidget window;
    window.resize(760, 460);
    window.show();
    return QApplication::exec();
}
