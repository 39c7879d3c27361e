// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: SingleInstance USER-DATA TIMEOUT [secondary | send | child]
//
// An instance for tst_SingleApplication. Prints its state, one word per line, and the messages that
// it gets, and ends with its standard input. "secondary" allows it to be a secondary instance, and
// "send" makes it send a message then. "child" makes it start a program that outlives it and print
// that program's process ID.

#include <SingleApplication>

#include <QProcess>
#include <QSocketNotifier>

#include <cstdio>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

void report(const QByteArray &text)
{
    std::puts(text.constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    const QString userData = QString::fromLocal8Bit(argv[1]);
    const int timeout = std::atoi(argv[2]);
    const QByteArray extra(argc > 3 ? argv[3] : "");

    report("starting");
    SingleApplication app(argc, argv, extra == "secondary" || extra == "send",
                          SingleApplication::Mode::User, timeout, userData);
    QObject::connect(&app, &SingleApplication::instanceStarted, &app, [] { report("told"); });
    QObject::connect(&app, &SingleApplication::receivedMessage, &app,
                     [](quint32, const QByteArray &message) { report("got " + message); });
    report(app.isPrimary() ? "primary" : "secondary");
    if (extra == "send") {
        report(app.sendMessage("hello", timeout) ? "sent" : "not sent");
    }

    if (extra == "child") {
        qint64 pid = 0;
        QProcess::startDetached(u"sleep"_s, {u"600"_s}, QString(), &pid);
        report(QByteArray::number(pid));
    }

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &app, &QApplication::quit);
    return QApplication::exec();
}
