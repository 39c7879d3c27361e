// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/TitleFont.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QHash>

namespace {

// Qt takes the style with the nearest weight.
bool hasStyleNearMedium(const QString &family)
{
    bool hasNormal = false;
    const QStringList styles = QFontDatabase::styles(family);
    for (const QString &style : styles) {
        const int weight = QFontDatabase::weight(family, style);
        if (weight > QFont::Normal && weight <= QFont::DemiBold) {
            return true;
        }
        hasNormal = hasNormal || weight == QFont::Normal;
    }
    return !hasNormal;
}

} // namespace

QFont titleFont(const QFont &font)
{
    static QHash<QString, bool> families; // each row that is painted asks
    const QString family = QFontInfo(font).family();
    auto known = families.constFind(family);
    if (known == families.cend()) {
        known = families.insert(family, hasStyleNearMedium(family));
    }
    QFont title = font;
    if (*known) {
        title.setWeight(QFont::Medium);
    }
    return title;
}
