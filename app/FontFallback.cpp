// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FontFallback.h"

#include <QApplication>
#include <QFont>
#include <QStringList>

using namespace Qt::StringLiterals;

void substituteDesktopFont(const QFont &desktopFont)
{
    // Qt tries substitutes after all named families, so one entry for the last family is enough.
    QFont::insertSubstitutions(u"Segoe UI"_s, desktopFont.families());
}

void setApplicationFont()
{
    QFont font = QApplication::font();
    font.setFamilies({u"Segoe UI Variable"_s, u"Segoe UI"_s});
    font.setPixelSize(14);
    QApplication::setFont(font);
}
