// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FontFallback.h"

#include <QFont>
#include <QStringList>

using namespace Qt::StringLiterals;

void substituteDesktopFont(const QFont &desktopFont)
{
    // Qt tries substitutes after all named families, so one entry for the last family is enough.
    QFont::insertSubstitutions(u"Segoe UI"_s, desktopFont.families());
}
