// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The height in pixels for a list of equally tall rows that may take up what is available: all of
/// its rows and its frame, or less, but one row at least. 0 for a list without rows. A row that
/// claims no height counts as one pixel.
int listHeight(int rowCount, int rowHeight, int frameWidth, int available);
