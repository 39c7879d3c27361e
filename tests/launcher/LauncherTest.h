// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/FakePlatform.h"
#include "support/TestHome.h"

#include "launcher/AppLauncher.h"

#include <QDir>
#include <QStringList>
#include <QVariantList>

/// What the tests of AppLauncher have in common: two start-menu folders in the test's home.
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

/// An empty home, fakes without a memory, and two start-menu folders without a file.
inline void reset()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
    fakePlatform().startMenuRoots = {userMenu(), commonMenu()};
    QDir().mkpath(userMenu());
    QDir().mkpath(commonMenu());
}

/// Adds a start-menu file and returns its absolute path; the relative one starts with "user/" or
/// "common/".
inline QString addFile(const QString &relativePath)
{
    return testhome::writeFile(QStringLiteral("menu/") + relativePath, {});
}

/// One field of each record.
inline QStringList column(const QVariantList &records, const QString &key)
{
    QStringList values;
    for (const QVariant &record : records) {
        values.append(record.toMap().value(key).toString());
    }
    return values;
}

/// The records behind the built-in ones.
inline QVariantList startMenuRecords(const AppLauncher &launcher)
{
    return launcher.search(QString()).mid(builtinCount);
}

inline QStringList startMenuNames(const AppLauncher &launcher)
{
    return column(startMenuRecords(launcher), QStringLiteral("name"));
}

} // namespace launchertest
