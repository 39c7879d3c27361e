// SPDX-License-Identifier: GPL-3.0-or-later
//
// Makes SIGTERM, by which the end-to-end tests end a program, a normal exit. The leak sanitizer and
// the coverage library write their results only at a normal exit. Linked in builds that have one of
// them.
#include <QCoreApplication>

#include <csignal>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace {

int pipeEnds[2];

void wakeUp(int)
{
    [[maybe_unused]] const auto written = write(pipeEnds[1], "", 1);
}

// A thread, since the pipe must work before there is an event loop.
void quitAtSignal()
{
    char byte = 0;
    while (read(pipeEnds[0], &byte, 1) == 1) {
        if (QCoreApplication *application = QCoreApplication::instance()) {
            QMetaObject::invokeMethod(application, [] { QCoreApplication::exit(0); });
        } else {
            std::_Exit(0);
        }
    }
}

[[maybe_unused]] const bool isInstalled = [] {
    if (pipe2(pipeEnds, O_CLOEXEC) != 0) {
        return false;
    }
    std::thread(quitAtSignal).detach();
    std::signal(SIGTERM, wakeUp);
    return true;
}();

} // namespace
