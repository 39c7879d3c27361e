// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PageScroller.h"

#include "support/TestProgram.h"
#include "ui/FakeScreen.h"
#include "ui/WindowTest.h"

#include <QScrollArea>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

// 1024×640 at the factor 1.5.
const QRect small(0, 0, 683, 427);

/// Fills the page with buttons; returns the last one, for which a small screen has no room.
QPushButton *fill(QWidget &page)
{
    auto *layout = new QVBoxLayout(&page);
    QPushButton *last = nullptr;
    for (int number = 0; number < 15; ++number) {
        last = new QPushButton(QString::number(number), &page);
        last->setFocusPolicy(Qt::StrongFocus);
        layout->addWidget(last);
    }
    return last;
}

QScrollArea *scrollArea(const Window &w)
{
    return qobject_cast<QScrollArea *>(w.stack->currentWidget());
}

bool isWhollyVisible(const QWidget &widget)
{
    return widget.visibleRegion() == QRegion(widget.rect());
}

} // namespace

/// The window and its pages on a screen that is smaller than the window's sizes.
class tst_PageScroller : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void usualScreenNeedsNoScrollArea();
    void listFitsASmallScreen();
    void pageFitsASmallScreen();
    void pageScrollsToTheFocus();
    void clickReachesAPartlyVisibleControl();
    void pageIsFoundAgain();
    void pageOfAUsualScreenScrollsOnASmallOne();
    void windowGrowsOnlyWithinASmallScreen();
    void narrowScreenLimitsTheWidthAlone();
    void usualSizeIsBackOnAUsualScreen();
};

void tst_PageScroller::usualScreenNeedsNoScrollArea()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QCOMPARE(w.window.size(), QSize(760, 460));
}

void tst_PageScroller::listFitsASmallScreen()
{
    const FakeScreen screen(small, true);
    Window w;
    w.calc.records = numberedRecords(100);
    w.enter(u"calc "_s);
    QVERIFY(w.showActive());
    QCOMPARE(w.window.geometry(), small);
    QCOMPARE(w.window.height(), w.fittedHeight());
    QVERIFY(w.list->height() > 100);

    // A short list does not fill it.
    w.calc.records = numberedRecords(1);
    w.search();
    w.settle();
    QVERIFY(w.window.height() < small.height());
    QCOMPARE(w.window.width(), small.width());
}

void tst_PageScroller::pageFitsASmallScreen()
{
    const FakeScreen screen(small, true);
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.settle();
    QCOMPARE(w.window.geometry(), small);
    QVERIFY(w.todo.page->isVisible());
}

void tst_PageScroller::pageScrollsToTheFocus()
{
    const FakeScreen screen(small, true);
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    const QPushButton *last = fill(*w.todo.page);
    w.settle();
    QCOMPARE(w.window.geometry(), small);
    QVERIFY(!isWhollyVisible(*last));

    for (int count = 0; count < 40 && !last->hasFocus(); ++count) {
        QTest::keyClick(w.window.focusWidget(), Qt::Key_Tab);
    }
    QVERIFY(last->hasFocus());
    w.settle();
    QVERIFY(isWhollyVisible(*last));
}

void tst_PageScroller::clickReachesAPartlyVisibleControl()
{
    const FakeScreen screen(small, true);
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    const QPushButton *button = fill(*w.todo.page);
    w.settle();
    QScrollArea *area = scrollArea(w);
    area->ensureVisible(0, button->y() + button->height() / 2, 0, 0);
    QVERIFY(!button->visibleRegion().isEmpty() && !isWhollyVisible(*button));

    const QSignalSpy clicked(button, &QPushButton::clicked);
    const QRect visible = button->visibleRegion().boundingRect();
    const QPoint position = button->mapTo(&w.window, visible.center());
    QTest::mousePress(w.window.windowHandle(), Qt::LeftButton, {}, position);
    QVERIFY(button->hasFocus());
    QTest::mouseRelease(w.window.windowHandle(), Qt::LeftButton, {}, position);
    QCOMPARE(clicked.size(), 1);
}

void tst_PageScroller::pageIsFoundAgain()
{
    const FakeScreen screen(small, true);
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    const QScrollArea *area = scrollArea(w);
    QVERIFY(area);
    const int count = w.stack->count();
    w.enter(u"note"_s);
    QVERIFY(w.isListCurrent());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QCOMPARE(scrollArea(w), area);
    QCOMPARE(area->widget(), w.todo.page);
    QCOMPARE(w.stack->count(), count);
}

void tst_PageScroller::pageOfAUsualScreenScrollsOnASmallOne()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    const int count = w.stack->count();
    w.enter(u"note"_s);
    w.window.hide();

    const FakeScreen screen(small, true);
    w.window.setScreen(QGuiApplication::primaryScreen());
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QVERIFY(scrollArea(w));
    QCOMPARE(scrollArea(w)->widget(), w.todo.page);
    QCOMPARE(w.stack->count(), count);
}

void tst_PageScroller::windowGrowsOnlyWithinASmallScreen()
{
    const FakeScreen screen(small, true);
    Window w;
    w.enter(u"no such program"_s);
    QVERIFY(w.showActive());
    w.drift(QPoint(0, 200));
    w.enter(u""_s);
    w.settle();
    QVERIFY(w.window.height() > 300);
    QVERIFY(small.contains(w.window.geometry()));
}

void tst_PageScroller::narrowScreenLimitsTheWidthAlone()
{
    const FakeScreen screen(QRect(0, 0, 700, 1200), true);
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QCOMPARE(w.window.size(), QSize(700, 460));
    QCOMPARE(w.window.pos(), QPoint(0, 240));
}

void tst_PageScroller::usualSizeIsBackOnAUsualScreen()
{
    Window w;
    QScreen *usual = QGuiApplication::primaryScreen();
    {
        const FakeScreen screen(small, true);
        w.window.setScreen(QGuiApplication::primaryScreen());
        QVERIFY(w.showActive());
        QCOMPARE(w.window.width(), small.width());
        w.window.hide();
    }
    w.window.setScreen(usual);
    QVERIFY(w.showActive());
    QCOMPARE(w.window.minimumWidth(), 720);
    QCOMPARE(w.window.width(), 720);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QCOMPARE(w.window.height(), 460);
}

VASKEL_TEST(tst_PageScroller, QApplication)
#include "tst_PageScroller.moc"
