// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

/// The way to the running instance, which its single-instance library keeps open.
namespace instancechannel {

/// Tells the instances of this program from others. Those of all versions have the same name.
inline constexpr QLatin1StringView instanceName{"Vaskel"};

/// How long to wait for the running instance, in milliseconds.
constexpr int timeout = 1000;

enum class Delivery {
    Delivered,
    NotRunning,
    NoAnswer, ///< it runs, but does not take the message in time
};

/// Sends a message to the running instance of this user. Needs no application object and opens no
/// display.
Delivery deliver(const QByteArray &message);

/// Lets the answer leave to the sender of the message that this instance has just received. Call it
/// before the instance quits on a message.
void sendAnswer();

} // namespace instancechannel
