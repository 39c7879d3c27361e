// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: recorder [FILE | --shown [argument...]]
//
// Adds a line to the file: its path, its working directory and the arguments, separated by tabs.
// Without arguments the file is beside the program, with ".txt" appended to its name; with --shown
// it is the one in the variable VASKEL_SHOWN_FOLDERS.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLockFile>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    QString filePath = arguments.isEmpty()
                           ? QString(QCoreApplication::applicationFilePath() + ".txt"_L1)
                           : arguments.takeFirst();
    if (filePath == "--shown"_L1) {
        filePath = qEnvironmentVariable("VASKEL_SHOWN_FOLDERS");
    }
    const QStringList line =
        QStringList{QCoreApplication::applicationFilePath(), QDir::currentPath()} + arguments;
    // QFile looks for the end when it opens a file to append: without the lock, two programs that
    // start at once may write to the same place.
    QLockFile turn(filePath + ".lock"_L1);
    QFile file(filePath);
    return turn.lock() && file.open(QIODevice::Append)
                   && file.write((line.join(u'\t') + u'\n').toUtf8()) > 0 && file.flush()
               ? 0
               : 1;
}
