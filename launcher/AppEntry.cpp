// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppEntry.h"

#include "core/ResultRecord.h"
#include "launcher/Ascii.h"
#include "launcher/PinyinConverter.h"

namespace {

// Equal texts share their memory.
QString shared(const QString &text, const QString &equalText)
{
    return text == equalText ? equalText : text;
}

} // namespace

AppEntry::AppEntry(const QString &appName, const QString &appPath, const QString &appDescription,
                   const QString &appIconPath)
    : AppEntry(appName, appPath, AppDescription(appDescription), appIconPath)
{
}

AppEntry::AppEntry(const QString &appName, const QString &appPath,
                   const AppDescription &appDescription, const QString &appIconPath)
    : name(appName)
    , path(appPath)
    , description(appDescription.text)
    , iconPath(appIconPath)
    , pinyin(shared(PinyinConverter::instance().toPinyin(name), name))
    , pinyinInitials(shared(PinyinConverter::instance().toPinyinInitials(name), pinyin))
    // The pinyin of an ASCII name is its lower case.
    , lowerName(isAscii(name) ? pinyin : shared(name.toLower(), pinyin))
    , lowerDescription(appDescription.lowerText)
    , record(makeProgramRecord(name, path, iconPath, description))
{
}
