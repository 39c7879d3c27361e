// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InstanceChannel.h"

#include "compat/SingleApplication/InstanceLock.h"
#include "compat/SingleApplication/InstanceMessage.h"

#include <QDeadlineTimer>

#include <chrono>
#include <thread>

using namespace std::chrono_literals;

namespace instancechannel {

Delivery deliver(const QByteArray &message)
{
    const QDeadlineTimer deadline(timeout);
    InstanceLock lock(instanceName);
    // The holder of the lock may not listen yet, or no longer.
    while (!sendInstanceMessage(lock.serverName(), message, deadline)) {
        if (lock.tryLock() != InstanceLock::State::HeldElsewhere) {
            return Delivery::NotRunning;
        }
        if (deadline.hasExpired()) {
            return Delivery::NoAnswer;
        }
        std::this_thread::sleep_for(10ms);
    }
    return Delivery::Delivered;
}

void sendAnswer() {} // the sender waits for none

} // namespace instancechannel
