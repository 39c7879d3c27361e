// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: recorder [FILE [argument...]]
//
// Adds a line to the file: its own path, its working directory and the arguments, with tabs
// between. Without arguments the file lies beside the program and is called as it, with ".txt"
// behind.

#include <QCoreApplication>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const QString filePath = arguments.isEmpty()
                                 ? QString(QCoreApplication::applicationFilePath() + ".txt"_L1)
                                 : arguments.takeFirst();
    const QStringList line =
        QStringList{QCoreApplication::applicationFilePath(), QDir::currentPath()} + arguments;
    QFile file(filePath);
    return file.open(QIODevice::Append) && file.write((line.join(u'\t') + u'\n').toUtf8()) > 0 ? 0
                                                                                              : 1;
}
