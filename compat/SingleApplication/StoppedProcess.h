// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

/// Prints a line if the process at the other end of a local socket is stopped, as by SIGSTOP. The
/// system takes connections and messages for a stopped process, which gets them when it continues.
void warnIfStopped(qintptr socketDescriptor);
