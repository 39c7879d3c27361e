// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The address of the update server, without a trailing slash. Set when the program is built. Tests
/// link a body that returns an address of this machine.
QString updateServer();
