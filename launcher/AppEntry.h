// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "launcher/PinyinConverter.h"

#include <QString>

/// An entry of the catalogue. The constructor derives all that a search compares from the name and
/// the description, which are in the language of the program at its start.
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
    QString path;             ///< the argument of AppLauncher::launch
    QString description;      ///< second line of the row
    QString iconPath;         ///< a PNG file; empty for a row without an icon
    QString pinyin;           ///< the whole name transliterated, in lower case
    QString pinyinInitials;   ///< its letters; of Chinese ones the first pinyin letter
    QString lowerName;        ///< compared by a search instead of the name
    QString lowerDescription; ///< compared by a search instead of the description
};
