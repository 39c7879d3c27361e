// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/LinkIcons.h"

namespace platform {

struct LinkIcons::Memory
{
};

LinkIcons::LinkIcons() = default;
LinkIcons::~LinkIcons() = default;

// QFileIconProvider asks Windows, which knows the icons of links.
QIcon LinkIcons::icon(const QString &)
{
    return {};
}

} // namespace platform
