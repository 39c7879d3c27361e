// SPDX-License-Identifier: GPL-3.0-or-later
//
// A minimal program with a window: the cost of a start without a launcher.
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
