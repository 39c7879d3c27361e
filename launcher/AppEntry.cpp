// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppEntry.h"

#include "core/ResultRecord.h"
#include "launcher/PinyinConverter.h"

#include <algorithm>

namespace {

// The pinyin of an ASCII name is already its lower case.
bool isAscii(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

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
    , lowerName(isAscii(name) ? pinyin : shared(name.toLower(), pinyin))
    , lowerDescription(appDescription.lowerText)
    , record(makeProgramRecord(name, path, iconPath, description))
{
}
