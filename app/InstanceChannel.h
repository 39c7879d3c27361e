// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

/// The way to the running instance, which its single-instance library keeps open.
namespace instancechannel {

/// Identifies the instances of this program, the same for all its versions.
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

/// Sends what is left of the answer to the message that this instance has just received. Call it
/// before the instance quits on a message.
void sendAnswer();

} // namespace instancechannel
