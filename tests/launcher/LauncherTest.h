// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/FakePlatform.h"
#include "support/TestHome.h"

#include "launcher/AppLauncher.h"

#include <QDir>
#include <QStringList>
#include <QVariantList>

/// Shared by the tests of AppLauncher: two start-menu folders in the home of the test.
namespace launchertest {

inline constexpr int builtinCount = 8;

inline QString userMenu()
{
    return testhome::path() + QStringLiteral("/menu/user");
}

inline QString commonMenu()
{
    return testhome::path() + QStringLiteral("/menu/common");
}

/// Empties the home, resets the fakes and creates two empty start-menu folders.
inline void reset()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
    fakePlatform().startMenuRoots = {userMenu(), commonMenu()};
    QDir().mkpath(userMenu());
    QDir().mkpath(commonMenu());
}

/// Adds a start-menu file and returns its absolute path. The relative path starts with "user/" or
/// "common/".
inline QString addFile(const QString &relativePath)
{
    return testhome::writeFile(QStringLiteral("menu/") + relativePath, {});
}

/// Returns one field of each record.
inline QStringList column(const QVariantList &records, const QString &key)
{
    QStringList values;
    for (const QVariant &record : records) {
        values.append(record.toMap().value(key).toString());
    }
    return values;
}

/// The records after those of the built-in programs.
inline QVariantList startMenuRecords(const AppLauncher &launcher)
{
    return launcher.search(QString()).mid(builtinCount);
}

inline QStringList startMenuNames(const AppLauncher &launcher)
{
    return column(startMenuRecords(launcher), QStringLiteral("name"));
}

} // namespace launchertest
