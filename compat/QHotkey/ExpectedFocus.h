// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Whether the program shows a window that can have the focus.
bool expectsFocus();
