// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

/// Keys and pointer motion like a user's: the events pass through the screen that wine runs on.
/// Wine does not tell when they have arrived, so wait for their effect.
namespace realinput {

/// Runs xdotool with commands such as {"key", "ctrl+alt+space"}; those of one call stay in order.
void send(const QStringList &commands);

/// Where keys and clicks go at the moment, for the message of a wait in vain.
QString foreground();

} // namespace realinput
