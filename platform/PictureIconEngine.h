// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIconEngine>
#include <QList>
#include <QPixmap>

namespace platform {

/// An icon made of pixmaps, each with its own device pixel ratio, as QIcon::addPixmap() makes it,
/// but without QPixmapCache: Qt 6.4 keeps the key of each dropped pixmap for ever. For icons of
/// files that are read again and again.
class PictureIconEngine : public QIconEngine
{
public:
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override;
    void addPixmap(const QPixmap &pixmap, QIcon::Mode mode, QIcon::State state) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
    bool isNull() override { return m_pictures.isEmpty(); }
    QIconEngine *clone() const override { return new PictureIconEngine(*this); }

private:
    QPixmap draw(const QSize &pixels, QIcon::Mode mode, qreal scale) const;
    const QPixmap *bestPicture(const QSize &pixels, qreal scale) const;

    QList<QPixmap> m_pictures; // of any mode and state
};

/// Adds a picture to an icon, which gets such an engine with its first one.
void addPicture(QIcon &icon, const QPixmap &picture);

} // namespace platform
