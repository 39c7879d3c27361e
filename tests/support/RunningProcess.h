// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

/// Whether the process with this ID runs. One that has ended may still wait for its parent.
bool isRunning(qint64 process);
