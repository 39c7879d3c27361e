// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: lister [root file]
//
// Prints the name under which a file of a start-menu root is listed, or nothing. Without arguments
// it prints the program of the row for the system's settings. A process of its own, since the
// running desktop is fixed for a process.

#include "platform/BuiltinPrograms.h"
#include "platform/StartMenu.h"

#include <QFile>

#include <cstdio>

int main(int argc, char *argv[])
{
    QString answer;
    if (argc == 3) {
        const QString file = QFile::decodeName(argv[2]);
        answer = platform::startMenuNames(QFile::decodeName(argv[1]), {file}).value(file);
    } else {
        answer = platform::builtinProgram(platform::BuiltinProgram::Settings).path;
    }
    std::fputs(answer.toUtf8().constData(), stdout);
    return 0;
}
