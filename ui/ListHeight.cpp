// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ListHeight.h"

#include <algorithm>

namespace {

constexpr int listPadding = 5; // above the first and below the last row

} // namespace

int listHeight(int rowCount, int rowHeight, int frameWidth, int available)
{
    if (rowCount == 0) {
        return 0;
    }
    const int row = std::max(rowHeight, 1);
    const int wanted = row * rowCount + 2 * (frameWidth + listPadding);
    return std::min(wanted, std::max(available, row));
}
