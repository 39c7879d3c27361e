// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

/// The way to the running instance, which its single-instance library keeps open.
namespace instancechannel {

enum class Delivery {
    Delivered,
    NotRunning,
    NoAnswer, ///< it runs, but does not take the message within a second
};

/// Sends a message to the running instance of this user. Needs no application object and opens no
/// display.
Delivery deliver(const QByteArray &message);

/// Lets the answer leave to the sender of the message that this instance has just received. Call it
/// before the instance quits on a message.
void sendAnswer();

} // namespace instancechannel
