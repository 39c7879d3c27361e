// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

/// Keys and pointer as a user moves them: the events come from the screen that wine runs on, by way
/// of its driver. Wine cannot say when the events are through, so that whoever sends them waits for
/// their effect.
namespace realinput {

/// Has xdotool do this, such as {"key", "ctrl+alt+space"}; all in one call comes in this order.
void send(const QStringList &commands);

/// Where keys and clicks go at the moment, for the message of a wait in vain.
QString foreground();

} // namespace realinput
