// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/Fuzz.h"

#include <QApplication>
#include <QFile>
#include <QtGlobal>

#include <cstdio>

namespace {

void printFatalMessages(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
    }
}

const bool isSilent = (qInstallMessageHandler(&printFatalMessages), true);

} // namespace

namespace fuzz {

void check(bool holds, const char *what)
{
    if (!holds) {
        qFatal("%s", what);
    }
}

void startApplication(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // libFuzzer ends the process by exit(), which widgets do not survive.
    static const QApplication &application = *new QApplication(*argc, *argv);
    Q_UNUSED(application)
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    check(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
          "cannot write the file of the input");
}

} // namespace fuzz
