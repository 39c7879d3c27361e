// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariant>

/// A description that all entries of a folder share.
struct AppDescription
{
    explicit AppDescription(const QString &description)
        : text(description)
        , lowerText(description.toLower())
    {
    }

    QString text;
    QString lowerText; ///< in lower case
};

/// An entry of the catalogue. The constructor derives all that a search compares from the name and
/// the description, which are in the language of the program at its start. Every entry has all of
/// its texts; equal ones share their memory.
struct AppEntry
{
    AppEntry(const QString &appName, const QString &appPath, const QString &appDescription,
             const QString &appIconPath);
    AppEntry(const QString &appName, const QString &appPath, const AppDescription &appDescription,
             const QString &appIconPath);

    QString name;             ///< first line of the row
    QString path;             ///< the argument of AppLauncher::launch
    QString description;      ///< second line of the row
    QString iconPath;         ///< a PNG file; empty for a row without an icon
    QString pinyin;           ///< the whole name transliterated, in lower case
    QString pinyinInitials;   ///< the same, but a Chinese character as the first letter of it
    QString lowerName;        ///< compared by a search instead of the name
    QString lowerDescription; ///< compared by a search instead of the description
    QVariant record;          ///< what each search returns for the entry
};
