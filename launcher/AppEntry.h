// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "launcher/PinyinConverter.h"

#include <QString>

/// One launchable thing of the catalogue. All that a search compares is derived here, once, from
/// the name and the description in the language of the program's start.
struct AppEntry
{
    AppEntry(const QString &appName, const QString &appPath, const QString &appDescription,
             const QString &appIconPath)
        : name(appName)
        , path(appPath)
        , description(appDescription)
        , iconPath(appIconPath)
        , pinyin(PinyinConverter::instance().toPinyin(name))
        , pinyinInitials(PinyinConverter::instance().toPinyinInitials(name))
        , lowerName(name.toLower())
        , lowerDescription(description.toLower())
    {
    }

    QString name;             ///< first line of the row
    QString path;             ///< what AppLauncher::launch is given
    QString description;      ///< second line of the row
    QString iconPath;         ///< a PNG file; empty for a row without an icon
    QString pinyin;           ///< the whole name transliterated, in lower case
    QString pinyinInitials;   ///< the name's letters, Chinese ones by their first sound
    QString lowerName;        ///< what a search compares instead of the name
    QString lowerDescription; ///< what a search compares instead of the description
};
