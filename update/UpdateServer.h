// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The address of the update server, without a trailing slash. It is chosen when the program is
/// built; tests that download bring a body of their own, which never leads off this machine.
QString updateServer();
