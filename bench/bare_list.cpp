// SPDX-License-Identifier: GPL-3.0-or-later
//
// A minimal program with a list that has the program's style sheet: the cost of a start without a
// launcher, but with fonts, layout and as many rows as there are programs.
#include <QApplication>
#include <QFile>
#include <QListWidget>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QFile sheet(u":/bench/style.qss"_s);
    if (!sheet.open(QIODevice::ReadOnly)) {
        return 1;
    }
    app.setStyleSheet(QString::fromUtf8(sheet.readAll()));

    QListWidget list;
    for (int number = 0; number < 500; ++number) {
        list.addItem(u"Program %1"_s.arg(number));
    }
    list.resize(760, 460);
    list.show();
    return QApplication::exec();
}
