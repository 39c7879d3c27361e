// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Whether a window of the program shows that can have the focus.
bool expectsFocus();
