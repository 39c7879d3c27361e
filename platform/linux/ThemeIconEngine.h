// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIconEngine>
#include <QList>
#include <QPixmap>
#include <QString>

namespace platform {

/// The sizes that a folder of an icon theme is for, in the terms of its file
/// "index.theme".
struct IconSizes
{
    enum Kind {
        Fixed,
        Scalable,
        Threshold,
    };

    Kind kind = Threshold;
    int size = 0;
    int minimum = 0;
    int maximum = 0;
    int threshold = 2;
    int scale = 1;
};

/// A picture of an icon.
struct IconPicture
{
    QString file;
    IconSizes sizes;
};

/// Draws an icon of a theme: the picture that suits the size best, reduced if it is larger. A
/// vector picture is drawn at the size itself.
class ThemeIconEngine : public QIconEngine
{
public:
    /// The pictures are in the order of preference among equally suitable ones.
    explicit ThemeIconEngine(QList<IconPicture> pictures);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine *clone() const override;
    bool isNull() override { return m_pictures.isEmpty(); }

private:
    /// Draws the picture for this size and scale, reduced to at most `pixels`.
    QPixmap draw(const QSize &pixels, const QSize &size, int scale);

    QList<IconPicture> m_pictures;
    QPixmap m_last;   // LinkIcons draws an icon to check it; its caller then draws it
    QSize m_lastSize; // in pixels
};

} // namespace platform
