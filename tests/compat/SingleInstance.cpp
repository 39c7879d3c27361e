// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: SingleInstance USER-DATA TIMEOUT [secondary | child]
//
// An instance for tst_SingleApplication. Prints its state, one word per line, and ends with its
// standard input. "secondary" allows it to be a secondary instance. "child" makes it start a
// program that outlives it and print that program's process id.

#include <SingleApplication>

#include <QProcess>
#include <QSocketNotifier>

#include <cstdio>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

void report(const char *text)
{
    std::puts(text);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    const QString userData = QString::fromLocal8Bit(argv[1]);
    const int timeout = std::atoi(argv[2]);
    const QByteArray extra(argc > 3 ? argv[3] : "");

    report("starting");
    SingleApplication app(argc, argv, extra == "secondary", SingleApplication::Mode::User, timeout,
                          userData);
    QObject::connect(&app, &SingleApplication::instanceStarted, &app, [] { report("told"); });
    report(app.isPrimary() ? "primary" : "secondary");

    if (extra == "child") {
        qint64 pid = 0;
        QProcess::startDetached(u"sleep"_s, {u"600"_s}, QString(), &pid);
        report(QByteArray::number(pid).constData());
    }

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &app, &QApplication::quit);
    return QApplication::exec();
}
