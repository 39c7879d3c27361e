// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FontFallback.h"

#include <QFont>
#include <QStringList>

using namespace Qt::StringLiterals;

void substituteDesktopFont(const QFont &desktopFont)
{
    // Substitutes come behind all the fonts that are named, so the last of them will do.
    QFont::insertSubstitutions(u"Segoe UI"_s, desktopFont.families());
}
