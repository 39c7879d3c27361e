// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Includes QHotkey. The library's header has Qt's keywords in it, which this project switches off.

#include <QObject>

#ifdef QT_NO_KEYWORDS
#define signals Q_SIGNALS
#define slots Q_SLOTS
#endif

#include <QHotkey>

#ifdef QT_NO_KEYWORDS
#undef signals
#undef slots
#endif
