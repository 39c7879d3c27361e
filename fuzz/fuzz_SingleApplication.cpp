// SPDX-License-Identifier: GPL-3.0-or-later
#include <SingleApplication>

#include "compat/SingleApplication/InstanceLock.h"
#include "fuzz/Fuzz.h"

#include <QDeadlineTimer>
#include <QLocalSocket>

#include <array>
#include <vector>

using namespace Qt::StringLiterals;

// The input is what other starts of the program send to the first one. Each line is one of them.
// The first one counts them and reads nothing.

namespace {

constexpr qsizetype maximumStarts = 5;

const QString userData = u"VaskelFuzz"_s;
int started = 0;

void waitForStarts(qsizetype count)
{
    const QDeadlineTimer deadline(10000);
    while (started < count && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    QCoreApplication::processEvents();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto &application =
        *new SingleApplication(*argc, *argv, false, SingleApplication::Mode::User, 1000, userData);
    QObject::connect(&application, &SingleApplication::instanceStarted, &application,
                     [] { ++started; });
    fuzz::check(application.isPrimary(), "the first start is no primary instance");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QString server = InstanceLock(userData).serverName();
    const QByteArrayList messages = fuzz::bytesOf(data, size).split('\n').mid(0, maximumStarts);
    started = 0;
    for (const QByteArray &message : messages) {
        QLocalSocket socket;
        socket.connectToServer(server);
        fuzz::check(socket.waitForConnected(5000), "the first start does not answer");
        socket.write(message);
        socket.flush();
    }
    waitForStarts(messages.size());
    fuzz::check(started == messages.size(), "another number of starts is reported");
    return 0;
}
