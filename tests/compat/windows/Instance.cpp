// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: Instance USER-DATA TIMEOUT FILE [secondary | send]
//
// An instance for tst_SingleApplicationOnWindows. Writes its state and the messages that it gets to
// the file, one per line, and ends when a file of the same name with ".quit" appended exists.
// "secondary" allows it to be a secondary instance, and "send" makes it send a message then. It
// also ends when its standard input closes, so that it does not hold the lock after a killed test.

#include "EndWithInput.h"

#include <SingleApplication>

#include <QFile>
#include <QTimer>

#include <chrono>

#include <windows.h>

using namespace std::chrono_literals;

namespace {

QString reportPath;

void report(const QString &filePath, const QByteArray &text)
{
    QFile file(filePath);
    if (file.open(QIODevice::Append)) {
        file.write(text + '\n');
    }
}

void reportWarnings(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtWarningMsg) {
        report(reportPath, ("warning: " + message.toUtf8()).constData());
    }
}

} // namespace

int main(int argc, char *argv[])
{
    endWithInput();

    const QString userData = QString::fromLocal8Bit(argv[1]);
    const int timeout = std::atoi(argv[2]);
    const QString filePath = QString::fromLocal8Bit(argv[3]);

    reportPath = filePath;
    qInstallMessageHandler(&reportWarnings);
    report(filePath, "starting");
    SingleApplication app(argc, argv, argc > 4, SingleApplication::Mode::User, timeout, userData);
    QObject::connect(&app, &SingleApplication::instanceStarted, &app,
                     [&filePath] { report(filePath, "told"); });
    QObject::connect(
        &app, &SingleApplication::receivedMessage, &app,
        [&filePath](quint32, const QByteArray &message) { report(filePath, "got " + message); });
    report(filePath, app.isPrimary() ? "primary" : "secondary");
    if (QByteArray(argc > 4 ? argv[4] : "") == "send") {
        report(filePath, app.sendMessage("hello", timeout) ? "sent" : "not sent");
    }

    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &app, [&filePath] {
        if (QFile::exists(filePath + QStringLiteral(".quit"))) {
            QCoreApplication::quit();
        }
    });
    timer.start(20ms);
    return QApplication::exec();
}
