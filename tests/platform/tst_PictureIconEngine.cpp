// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PictureIconEngine.h"

#include "support/TestProgram.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QTest>

#include <utility>

namespace {

QPixmap pictureOf(int side, qreal factor)
{
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.fillRect(side / 4, 0, side / 2, side, QColor(200, 40, side));
    painter.end();
    picture.setDevicePixelRatio(factor);
    return picture;
}

QImage painted(const QIcon &icon, const QSize &size, qreal factor)
{
    QImage image(size * factor, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    image.setDevicePixelRatio(factor);
    QPainter painter(&image);
    icon.paint(&painter, QRect(QPoint(), size));
    return image;
}

} // namespace

/// The icon is compared with the one that QIcon itself makes of the same pictures.
class tst_PictureIconEngine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawsWhatQIconDraws_data();
    void drawsWhatQIconDraws();
    void isNullWithoutAPicture();
};

void tst_PictureIconEngine::drawsWhatQIconDraws_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<qreal>("factor");
    for (const int side : {16, 24, 32, 64}) {
        for (const qreal factor : {1.0, 2.0}) {
            QTest::addRow("%d at %g", side, factor) << side << factor;
        }
    }
}

void tst_PictureIconEngine::drawsWhatQIconDraws()
{
    QFETCH(int, side);
    QFETCH(qreal, factor);
    const QSize size(side, side);
    QIcon expected;
    QIcon icon;
    for (const auto &[pixels, factorOfPicture] :
         {std::pair(48, 1.0), std::pair(32, 1.0), std::pair(96, 2.0)}) {
        expected.addPixmap(pictureOf(pixels, factorOfPicture));
        platform::addPicture(icon, pictureOf(pixels, factorOfPicture));
    }
    const QPixmap pixmap = icon.pixmap(size, factor);
    const QPixmap expectedPixmap = expected.pixmap(size, factor);
    QCOMPARE(pixmap.size(), expectedPixmap.size());
    QCOMPARE(pixmap.devicePixelRatio(), expectedPixmap.devicePixelRatio());
    QCOMPARE(pixmap.toImage(), expectedPixmap.toImage());
    QCOMPARE(icon.actualSize(size), expected.actualSize(size));
    QCOMPARE(painted(icon, size, factor), painted(expected, size, factor));
    for (const auto mode : {QIcon::Disabled, QIcon::Selected}) {
        QCOMPARE(icon.pixmap(size, factor, mode).toImage(),
                 expected.pixmap(size, factor, mode).toImage());
    }
}

void tst_PictureIconEngine::isNullWithoutAPicture()
{
    QIcon icon;
    platform::addPicture(icon, QPixmap());
    QVERIFY(icon.isNull());
    QVERIFY(icon.pixmap(16).isNull());
}

VASKEL_TEST(tst_PictureIconEngine, QApplication)
#include "tst_PictureIconEngine.moc"
