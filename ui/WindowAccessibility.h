// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Makes a screen reader take a MainWindow for a window, which it does not do for a plain QWidget.
/// Further calls have no effect.
void installWindowAccessibility();
