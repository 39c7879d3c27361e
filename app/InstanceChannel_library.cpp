// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InstanceChannel.h"

#include "platform/ProcessEnvironment.h"

#include <SingleApplication>

#include <QEventLoop>

namespace instancechannel {

// The library sends messages only from an application object. This one has no window system, and
// main() creates another one if no instance runs.
Delivery deliver(const QByteArray &message)
{
    const platform::WithoutWindowSystem withoutWindowSystem;
    int argc = 1;
    char name[] = "Vaskel";
    char *argv[] = {name, nullptr};
    SingleApplication app(argc, argv, true, SingleApplication::Mode::User, timeout, instanceName);
    if (app.isPrimary()) {
        return Delivery::NotRunning;
    }
    return app.sendMessage(message, timeout) ? Delivery::Delivered : Delivery::NoAnswer;
}

void sendAnswer()
{
    // The library leaves it in the buffer of the socket, which the event loop writes.
    constexpr int longest = 100; // in milliseconds
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, longest);
}

} // namespace instancechannel
