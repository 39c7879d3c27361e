// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/Updater.h"

#include <QCoreApplication>
#include <QFile>
#include <QThread>
#include <QTimer>

#include <cstdio>

using namespace Qt::StringLiterals;

// usage: self_updater URL MILLISECONDS MARK
//
// Updates itself to the program at that address. Waits that many milliseconds before it ends, and
// creates the file MARK last.
int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    Updater updater;
    QObject::connect(&updater, &Updater::downloadError, &app, [](const QString &message) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
        QCoreApplication::exit(1);
    });
    QTimer::singleShot(0, &updater, [&] { updater.downloadAndInstall(arguments.at(1)); });
    const int status = QCoreApplication::exec();
    QThread::msleep(arguments.at(2).toULong());
    QFile mark(arguments.at(3));
    return mark.open(QIODevice::WriteOnly) ? status : 2;
}
