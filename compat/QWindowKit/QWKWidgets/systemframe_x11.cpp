// SPDX-License-Identifier: GPL-3.0-or-later
#include "systemframe.h"

namespace QWK {

std::unique_ptr<SystemFrame> SystemFrame::create(QWindow *, const SectionAt &)
{
    return nullptr;
}

} // namespace QWK
