// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/PaletteWatcher.h"

#include "support/TestProgram.h"

#include <QSignalSpy>
#include <QTest>
#include <QWidget>

using namespace Qt::StringLiterals;

class tst_PaletteWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsAChangeOfTheWidgetsOwnPalette();
    void tellsAChangeByAStyleSheet();
    void staysSilentAtAnyOtherChange();
};

void tst_PaletteWatcher::tellsAChangeOfTheWidgetsOwnPalette()
{
    QWidget widget;
    const QSignalSpy spy(new PaletteWatcher(&widget), &PaletteWatcher::paletteChanged);
    widget.setPalette(QPalette(Qt::red));
    QCOMPARE(spy.count(), 1);
    widget.setPalette(QPalette(Qt::blue));
    QCOMPARE(spy.count(), 2);
}

void tst_PaletteWatcher::tellsAChangeByAStyleSheet()
{
    QWidget parent;
    auto *widget = new QWidget(&parent);
    widget->ensurePolished();
    const QSignalSpy spy(new PaletteWatcher(widget), &PaletteWatcher::paletteChanged);
    QColor seen;
    connect(widget->findChild<PaletteWatcher *>(), &PaletteWatcher::paletteChanged, widget,
            [&] { seen = widget->palette().color(QPalette::WindowText); });
    parent.setStyleSheet(u"QWidget { color: #123456; }"_s);
    QVERIFY(spy.count() > 0);
    QCOMPARE(seen, QColor(0x12, 0x34, 0x56));
}

void tst_PaletteWatcher::staysSilentAtAnyOtherChange()
{
    QWidget parent;
    auto *widget = new QWidget(&parent);
    auto *child = new QWidget(widget);
    const QSignalSpy spy(new PaletteWatcher(widget), &PaletteWatcher::paletteChanged);
    child->setPalette(QPalette(Qt::red));
    widget->setEnabled(false);
    widget->setFont(QFont(u"Another"_s));
    widget->resize(10, 10);
    QCOMPARE(spy.count(), 0);
}

VASKEL_TEST(tst_PaletteWatcher, QApplication)
#include "tst_PaletteWatcher.moc"
