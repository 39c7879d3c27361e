// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: autostarter [on|off]
//
// Enables or disables its own auto-start. Without an argument it was started at log-in and writes
// its path to the file in the variable RECORD.

#include "platform/AutoStart.h"

#include <QCoreApplication>
#include <QSaveFile>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    if (argc == 2) {
        platform::applyAutoStart(QCoreApplication::arguments().at(1) == "on"_L1);
        return 0;
    }
    QSaveFile file(qEnvironmentVariable("RECORD"));
    if (argc != 1 || !file.open(QIODevice::WriteOnly)) {
        return 1;
    }
    file.write(QCoreApplication::applicationFilePath().toUtf8());
    return file.commit() ? 0 : 1;
}
