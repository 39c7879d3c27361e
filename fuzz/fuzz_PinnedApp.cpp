// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/PinnedApp.h"

#include "fuzz/Fuzz.h"

#include <algorithm>

// The input is the text of a pins file.

namespace {

bool isSame(const PinnedApp &left, const PinnedApp &right)
{
    return left.name == right.name && left.path == right.path && left.iconPath == right.iconPath;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto pins = pinsFromJson(fuzz::bytesOf(data, size));
    if (!pins) {
        return 0;
    }
    const auto again = pinsFromJson(pinsToJson(*pins));
    fuzz::check(again
                    && std::equal(pins->begin(), pins->end(), again->begin(), again->end(), isSame),
                "the pins change when they are saved and loaded");
    return 0;
}
