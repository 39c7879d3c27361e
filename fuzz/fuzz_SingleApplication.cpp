// SPDX-License-Identifier: GPL-3.0-or-later
#include <SingleApplication>

#include "app/InstanceRequest.h"
#include "compat/SingleApplication/InstanceLock.h"
#include "fuzz/Fuzz.h"

#include <QDeadlineTimer>
#include <QLocalSocket>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

// Each line of the input is what another start of the program sends to the first one. An empty line
// is a mere start; any other arrives unchanged, whether it is a request or not.

namespace {

constexpr qsizetype maximumStarts = 5;

const QString userData = u"VaskelFuzz"_s;
QByteArrayList received;

void waitForMessages(qsizetype count)
{
    const QDeadlineTimer deadline(10000);
    while (received.size() < count && !deadline.hasExpired()) {
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
                     [] { received.append(QByteArray()); });
    QObject::connect(&application, &SingleApplication::receivedMessage, &application,
                     [](quint32, const QByteArray &message) { received.append(message); });
    fuzz::check(application.isPrimary(), "the first start is no primary instance");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QString server = InstanceLock(userData).serverName();
    QByteArrayList messages = fuzz::bytesOf(data, size).split('\n').mid(0, maximumStarts);
    received.clear();
    for (const QByteArray &message : messages) {
        QLocalSocket socket;
        socket.connectToServer(server);
        fuzz::check(socket.waitForConnected(5000), "the first start does not answer");
        socket.write(message);
        socket.flush();
        const std::optional<InstanceRequest> request = InstanceRequest::fromMessage(message);
        fuzz::check(!request || request->toMessage() == message, "a request has another message");
    }
    waitForMessages(messages.size());
    // The connections end in any order.
    std::sort(messages.begin(), messages.end());
    std::sort(received.begin(), received.end());
    fuzz::check(received == messages, "other messages arrive than were sent");
    return 0;
}
