// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/TestHome.h"

#include <QDir>
#include <QFileIconProvider>
#include <QIcon>
#include <QImage>

/// Makes every file and folder have an icon of only this size.
inline void useIconsOfSize(int size)
{
    const QByteArray number = QByteArray::number(size);
    testhome::writeFile(QStringLiteral("icons/test/index.theme"),
                        "[Icon Theme]\nName=test\nComment=test\nDirectories=all\n\n[all]\nSize="
                            + number + "\nMinSize=" + number + "\nMaxSize=" + number
                            + "\nType=Fixed\n");
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::red);
    const QString folder = testhome::path() + QStringLiteral("/icons/test/all");
    QDir().mkpath(folder);
    image.save(folder + QStringLiteral("/text-x-generic.png"));
    image.save(folder + QStringLiteral("/folder.png"));
    QIcon::setThemeSearchPaths({testhome::path() + QStringLiteral("/icons")});
    QIcon::setThemeName(QStringLiteral("none"));
    QIcon::setThemeName(QStringLiteral("test"));
}
