// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/TestHome.h"

#include <QBuffer>
#include <QIcon>
#include <QImage>

#include <utility>

/// Icon themes and icons in the home of the test, on a session without a desktop.
namespace iconthemefiles {

/// Leaves the session of the desktop, which would add an icon theme. Call it before the application
/// object is created.
inline void leaveTheDesktop()
{
    for (const char *name : {"XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "KDE_FULL_SESSION",
                             "GNOME_DESKTOP_SESSION_ID", "QT_QPA_PLATFORMTHEME"}) {
        qunsetenv(name);
    }
}

inline QByteArray png(const QColor &color)
{
    QImage image(32, 32, QImage::Format_ARGB32);
    image.fill(color);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

inline void installTheme(const QString &folder, const QList<std::pair<QString, QColor>> &icons)
{
    testhome::writeFile(folder + QLatin1StringView("/index.theme"),
                        "[Icon Theme]\nName=Any\nComment=Any\nDirectories=32x32/apps\n\n"
                        "[32x32/apps]\nSize=32\nType=Fixed\n");
    for (const auto &[name, color] : icons) {
        testhome::writeFile(folder + QLatin1StringView("/32x32/apps/") + name, png(color));
    }
}

/// Call it before the application object is created, since the search paths are those that exist
/// then.
inline void installIcons()
{
    installTheme(QStringLiteral("system/icons/hicolor"), {{QStringLiteral("own.png"), Qt::red}});
    installTheme(QStringLiteral("system/icons/Adwaita"),
                 {{QStringLiteral("application-x-executable.png"), Qt::gray},
                  {QStringLiteral("utilities-terminal.png"), Qt::blue},
                  {QStringLiteral("camera-photo.png"), Qt::green},
                  {QStringLiteral("image-x-generic.png"), Qt::darkGreen},
                  {QStringLiteral("application-pdf.png"), Qt::darkRed},
                  {QStringLiteral("own.png"), Qt::black}});
    testhome::writeFile(QStringLiteral("system/pixmaps/loose.png"), png(Qt::yellow));
    testhome::writeFile(QStringLiteral("data/pixmaps/users.png"), png(Qt::white));
    testhome::writeFile(QStringLiteral("a folder/of its own.png"), png(Qt::cyan));
    testhome::writeFile(QStringLiteral("a folder/of its own"), "no picture");
    testhome::writeFile(QStringLiteral("drawn.svg"),
                        "<svg xmlns='http://www.w3.org/2000/svg' width='9' "
                        "height='9'><rect width='9' height='9' fill='#ff00ff'/>"
                        "</svg>");
    testhome::writeFile(QStringLiteral("broken.png"), "\x89PNG nonsense");
}

inline QColor colorOf(const QIcon &icon)
{
    const QImage image = icon.pixmap(QSize(32, 32)).toImage();
    return image.isNull() ? QColor() : image.pixelColor(image.rect().center());
}

} // namespace iconthemefiles
