// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "ui/CommandLineEdit.h"
#include "ui/ManagementIcon.h"
#include "ui/WindowTest.h"

#include <QAccessible>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

QStringList pinTexts(const Window &w)
{
    QStringList texts;
    const QList<QPushButton *> buttons = w.pinButtons();
    for (const QPushButton *button : buttons) {
        texts.append(button->text());
    }
    return texts;
}

/// Pins more programs than the screen is wide.
void pinTooMany(Window &w)
{
    for (int number = 0; number < 20; ++number) {
        w.launcher.pinApp(u"/%1.link"_s.arg(number), u"Application %1"_s.arg(number), QString());
    }
    w.settle();
}

bool isWholeInStrip(const Window &w, const QPushButton &button)
{
    return w.strip->rect().contains(button.geometry());
}

void turnWheel(const Window &w, const QPoint &pixels, const QPoint &angle)
{
    const QPointF position(w.strip->rect().center());
    QWheelEvent event(position, w.strip->mapToGlobal(position), pixels, angle, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(w.strip, &event);
    w.settle();
}

void unpinAll(Window &w)
{
    const QVariantList pins = w.launcher.pinnedApps();
    for (const QVariant &pin : pins) {
        w.launcher.unpinApp(pin.toMap().value(u"path"_s).toString());
    }
}

} // namespace

/// The strip of pinned applications.
class tst_MainWindowPins : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void stripHasALabelAndAButtonPerPin();
    void buttonShowsTheIconOfItsPin();
    void ampersandIsNoMnemonic();
    void controlCharactersHaveVisibleMarks();
    void stripFollowsThePins();
    void rebuildingDeletesTheOldWidgets();

    void stripShowsWithPinsAndAnEmptyBox_data();
    void stripShowsWithPinsAndAnEmptyBox();
    void stripKeepsItsStateWhenAPageOpens();
    void stripIsHiddenByTheSearchBehindAPage();
    void pinChangedBehindAPageLeavesTheStripHidden();
    void stripWaitsForTheSearchAfterAPage();
    void pinChangedWhileTypingLeavesTheStripHidden();

    void buttonLaunchesItsPinAndHides();
    void tabKeyReachesThePinsFromTheBox();
    void tabKeyReachesThePinsBeforeTheList();
    void menuUnpins();
    void menuOpensAtThePointer();
    void dismissedMenuChangesNothing();
    void menuOfTheLastPinHidesTheStrip();
    void rebuildingMovesTheFocusFromThePinsToTheBox_data();
    void rebuildingMovesTheFocusFromThePinsToTheBox();
    void rebuildingKeepsTheFocusElsewhere();
    void pinsChangeTheHeight();
    void manyPinsWidenTheWindow();
    void pinsThatDoNotFitTheScreenStopTheWindowThere();
    void windowHasItsWidthBeforeItShows();
    void wheelScrollsPinsThatDoNotFit();
    void focusScrollsToAPin();
    void clickDoesNotScroll();
    void pinsThatFitDoNotScroll();
    void unpinningScrollsBack();
};

void tst_MainWindowPins::stripHasALabelAndAButtonPerPin()
{
    const Window w;
    QCOMPARE(w.strip->layout()->contentsMargins(), QMargins());
    QCOMPARE(w.strip->layout()->count(), 4);
    const auto *label = qobject_cast<QLabel *>(w.strip->layout()->itemAt(0)->widget());
    QVERIFY(label);
    QCOMPARE(label->text(), u"Pinned"_s);
    QCOMPARE(label->objectName(), u"muted"_s);
    QVERIFY(w.strip->layout()->itemAt(3)->spacerItem());

    QCOMPARE(pinTexts(w), QStringList({u"Calculator"_s, u"Task Manager"_s}));
    const QList<QPushButton *> buttons = w.pinButtons();
    for (const QPushButton *button : buttons) {
        QCOMPARE(button->objectName(), u"pinnedAppButton"_s);
        QCOMPARE(button->iconSize(), QSize(24, 24));
        QCOMPARE(button->contextMenuPolicy(), Qt::CustomContextMenu);
    }
}

void tst_MainWindowPins::buttonShowsTheIconOfItsPin()
{
    const QString icon = testhome::path() + "/pin.png"_L1;
    QImage image(24, 24, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(icon));

    Window w;
    unpinAll(w);
    w.launcher.pinApp(u"/a"_s, u"a"_s, icon);
    w.launcher.pinApp(u"/nothing/there"_s, u"b"_s, QString());
    const QString noIcon = w.launcher.pinnedApps().at(1).toMap().value(u"icon"_s).toString();
    QCOMPARE(w.pinButtons().at(0)->icon().pixmap(24, 24).toImage().pixelColor(12, 12),
             QColor(Qt::red));
    QCOMPARE(w.pinButtons().at(1)->icon().isNull(), noIcon.isEmpty());
}

void tst_MainWindowPins::ampersandIsNoMnemonic()
{
    Window w;
    unpinAll(w);
    w.launcher.pinApp(u"/a"_s, u"Tips & Tricks"_s, QString());
    QPushButton *button = w.pinButtons().at(0);
    QVERIFY(button->shortcut().isEmpty());
    QCOMPARE(QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name),
             u"Tips & Tricks"_s);
}

void tst_MainWindowPins::controlCharactersHaveVisibleMarks()
{
    Window w;
    unpinAll(w);
    w.launcher.pinApp(u"/a"_s, u"a\u202eb\nc"_s, QString());
    QCOMPARE(pinTexts(w), QStringList(u"a⟨U+202E⟩b⏎c"_s));
    const QVariantMap pin = w.launcher.pinnedApps().first().toMap();
    QCOMPARE(pin.value(u"name"_s).toString(), u"a\u202eb\nc"_s);
}

void tst_MainWindowPins::stripFollowsThePins()
{
    Window w;
    w.launcher.pinApp(u"/new.link"_s, u"记事本"_s, QString());
    QCOMPARE(pinTexts(w), QStringList({u"Calculator"_s, u"Task Manager"_s, u"记事本"_s}));
    w.launcher.unpinApp(programPath(1));
    QCOMPARE(pinTexts(w), QStringList({u"Task Manager"_s, u"记事本"_s}));
    unpinAll(w);
    QCOMPARE(w.strip->layout()->count(), 0);
    QVERIFY(w.strip->isHidden());
}

void tst_MainWindowPins::rebuildingDeletesTheOldWidgets()
{
    Window w;
    const QPointer<QPushButton> button = w.pinButtons().at(0);
    w.launcher.pinApp(u"/new.link"_s, u"new"_s, QString());
    QVERIFY(!button);
    QCOMPARE(w.strip->findChildren<QPushButton *>().size(), 3);
    QCOMPARE(w.strip->findChildren<QLabel *>().size(), 1);
}

void tst_MainWindowPins::stripShowsWithPinsAndAnEmptyBox_data()
{
    QTest::addColumn<bool>("pins");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("shows");

    for (const bool pins : {true, false}) {
        const auto row = [pins](const char *name, const QString &text, bool shows) {
            QTest::addRow("%s, %s", pins ? "pins" : "no pins", name) << pins << text << shows;
        };
        row("empty box", QString(), pins);
        row("one letter", u"x"_s, false);
        row("blanks", u"  "_s, false);
        row("command without arguments", u"calc "_s, false);
        row("command with arguments", u"calc 1"_s, false);
        row("unknown command", u"xyz abc"_s, false);
    }
}

void tst_MainWindowPins::stripShowsWithPinsAndAnEmptyBox()
{
    QFETCH(bool, pins);
    QFETCH(QString, text);
    QFETCH(bool, shows);

    Window w;
    if (!pins) {
        unpinAll(w);
    }
    w.enter(text);
    QCOMPARE(!w.strip->isHidden(), shows);

    // Rebuilding the strip applies the same rule.
    w.launcher.pinApp(u"/new.link"_s, u"new"_s, QString());
    QCOMPARE(!w.strip->isHidden(), text.isEmpty());
    w.enter(u"note"_s);
    QVERIFY(w.strip->isHidden());
    w.enter(QString());
    QVERIFY(!w.strip->isHidden());
}

void tst_MainWindowPins::stripKeepsItsStateWhenAPageOpens()
{
    Window w;
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QVERIFY(!w.strip->isHidden());
}

void tst_MainWindowPins::stripIsHiddenByTheSearchBehindAPage()
{
    Window w;
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.enter(u"todo "_s);
    QVERIFY(w.strip->isHidden());
}

void tst_MainWindowPins::pinChangedBehindAPageLeavesTheStripHidden()
{
    Window w;
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QVERIFY(!w.strip->isHidden());
    w.launcher.pinApp(u"/new.link"_s, u"new"_s, QString());
    QVERIFY(w.strip->isHidden());
}

void tst_MainWindowPins::stripWaitsForTheSearchAfterAPage()
{
    Window w;
    w.enter(u"todo "_s);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    Q_EMIT w.todo.viewCloseRequested();
    QVERIFY(w.strip->isHidden());
    w.enter(QString());
    QVERIFY(!w.strip->isHidden());
}

void tst_MainWindowPins::pinChangedWhileTypingLeavesTheStripHidden()
{
    Window w;
    w.enter(u"note"_s);
    w.launcher.unpinApp(programPath(1));
    QVERIFY(w.strip->isHidden());

    // The text of the box decides, although its search is still pending.
    w.box->setText(QString());
    w.launcher.unpinApp(programPath(5));
    w.launcher.pinApp(u"/new.link"_s, u"new"_s, QString());
    QVERIFY(!w.strip->isHidden());
}

void tst_MainWindowPins::buttonLaunchesItsPinAndHides()
{
    Window w;
    QVERIFY(w.showActive());
    QTest::mouseClick(w.pinButtons().at(1), Qt::LeftButton);
    QCOMPARE(launched(), QStringList(programPath(5)));
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowPins::tabKeyReachesThePinsFromTheBox()
{
    Window w;
    QVERIFY(w.showActive());
    w.launcher.pinApp(u"/new.link"_s, u"new"_s, QString());
    w.settle();
    QCOMPARE(QApplication::focusWidget(), w.edit);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), w.box->findChild<ManagementIcon *>());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), w.pinButtons().first());
}

void tst_MainWindowPins::tabKeyReachesThePinsBeforeTheList()
{
    Window w;
    QVERIFY(w.showActive());
    w.settle();
    const QList<QPushButton *> pins = w.pinButtons();
    pins.first()->setFocus();
    for (qsizetype i = 1; i < pins.size(); ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), pins.at(i));
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), w.list);
}

void tst_MainWindowPins::menuUnpins()
{
    Window w;
    QVERIFY(w.showActive());
    QCOMPARE(w.useMenu(w.pinButtons().at(0), QPoint(5, 5), u"Unpin from Start"_s),
             QStringList(u"Unpin from Start"_s));
    QCOMPARE(pinTexts(w), QStringList(u"Task Manager"_s));
    QVERIFY(!w.launcher.isPinned(programPath(1)));
    QVERIFY(w.window.isVisible());
    QCOMPARE(launched(), QStringList());
}

void tst_MainWindowPins::menuOpensAtThePointer()
{
    Window w;
    QVERIFY(w.showActive());
    const QList<QPushButton *> buttons = w.pinButtons();
    for (QPushButton *button : buttons) {
        w.useMenu(button, QPoint(5, 7), {});
        QCOMPARE(w.menuPosition, button->mapToGlobal(QPoint(5, 7)));
    }
}

void tst_MainWindowPins::dismissedMenuChangesNothing()
{
    Window w;
    QVERIFY(w.showActive());
    QCOMPARE(w.useMenu(w.pinButtons().at(0), QPoint(5, 5), {}), QStringList(u"Unpin from Start"_s));
    QCOMPARE(pinTexts(w), QStringList({u"Calculator"_s, u"Task Manager"_s}));
}

void tst_MainWindowPins::menuOfTheLastPinHidesTheStrip()
{
    Window w;
    QVERIFY(w.showActive());
    w.launcher.unpinApp(programPath(1));
    w.useMenu(w.pinButtons().at(0), QPoint(5, 5), u"Unpin from Start"_s);
    QVERIFY(w.strip->isHidden());
    QVERIFY(w.launcher.pinnedApps().isEmpty());
}

void tst_MainWindowPins::rebuildingMovesTheFocusFromThePinsToTheBox_data()
{
    QTest::addColumn<int>("focused");
    QTest::newRow("from the pin that goes") << 0;
    QTest::newRow("from another pin") << 1;
}

void tst_MainWindowPins::rebuildingMovesTheFocusFromThePinsToTheBox()
{
    QFETCH(int, focused);
    Window w;
    QVERIFY(w.showActive());
    w.pinButtons().at(focused)->setFocus();
    w.useMenu(w.pinButtons().at(0), QPoint(5, 5), u"Unpin from Start"_s);
    QCOMPARE(pinTexts(w), QStringList(u"Task Manager"_s));
    QCOMPARE(w.window.focusWidget(), w.edit);
}

void tst_MainWindowPins::rebuildingKeepsTheFocusElsewhere()
{
    Window w;
    QVERIFY(w.showActive());
    w.closeButton().setFocus();
    w.launcher.unpinApp(programPath(1));
    w.settle();
    QVERIFY(w.closeButton().hasFocus());
}

void tst_MainWindowPins::pinsChangeTheHeight()
{
    Window w;
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    QVERIFY(w.showActive());
    const int withStrip = w.window.height();
    unpinAll(w);
    QTRY_VERIFY(w.window.height() < withStrip);
    QCOMPARE(w.window.height(), w.fittedHeight());
    w.launcher.pinApp(u"/new.link"_s, u"new"_s, QString());
    QTRY_COMPARE(w.window.height(), withStrip);
}

void tst_MainWindowPins::manyPinsWidenTheWindow()
{
    Window w;
    QVERIFY(w.showActive());
    QCOMPARE(w.window.minimumWidth(), 720);
    for (int number = 0; number < 20; ++number) {
        w.launcher.pinApp(u"/%1.link"_s.arg(number), u"Application"_s, QString());
    }
    w.settle();
    QVERIFY(w.window.minimumWidth() > 760);
    QCOMPARE(w.window.width(), w.window.minimumWidth());
    QVERIFY(w.strip->width() >= w.strip->minimumSizeHint().width());
    unpinAll(w);
    w.settle();
    QCOMPARE(w.window.minimumWidth(), 720);
}

void tst_MainWindowPins::pinsThatDoNotFitTheScreenStopTheWindowThere()
{
    Window w;
    w.window.move(30, 10);
    QVERIFY(w.showActive());
    pinTooMany(w);
    QCOMPARE(w.window.minimumWidth(), w.window.screen()->availableGeometry().width());
    QCOMPARE(w.window.width(), w.window.minimumWidth());
    const QList<QPushButton *> pins = w.pinButtons();
    for (const QPushButton *pin : pins) {
        QVERIFY(pin->width() >= pin->minimumSizeHint().width());
    }
    QVERIFY(isWholeInStrip(w, *pins.first()));
    QVERIFY(!isWholeInStrip(w, *pins.last()));
    QVERIFY(w.window.screen()->availableGeometry().contains(w.window.geometry()));
    // Its widgets are those of a strip that fits.
    QCOMPARE(w.strip->layout()->count(), pins.size() + 2);
    QCOMPARE(pins.first()->parentWidget(), w.strip);
}

void tst_MainWindowPins::windowHasItsWidthBeforeItShows()
{
    for (int number = 0; number < 20; ++number) {
        AppLauncher().pinApp(u"/%1.link"_s.arg(number), u"Application"_s, QString());
    }
    const Window w;
    QCOMPARE(w.window.width(), w.window.screen()->availableGeometry().width());
}

void tst_MainWindowPins::wheelScrollsPinsThatDoNotFit()
{
    Window w;
    QVERIFY(w.showActive());
    pinTooMany(w);
    const QList<QPushButton *> pins = w.pinButtons();
    const int start = pins.first()->x();
    turnWheel(w, {}, QPoint(0, -120));
    QCOMPARE(pins.first()->x(), start - 120);
    turnWheel(w, QPoint(-7, 2), QPoint(-120, 0));
    QCOMPARE(pins.first()->x(), start - 127);
    turnWheel(w, {}, QPoint(0, -120'000));
    QCOMPARE(pins.last()->geometry().right(), w.strip->rect().right());
    turnWheel(w, {}, QPoint(0, 120'000));
    QCOMPARE(pins.first()->x(), start);
}

void tst_MainWindowPins::focusScrollsToAPin()
{
    Window w;
    QVERIFY(w.showActive());
    pinTooMany(w);
    const QList<QPushButton *> pins = w.pinButtons();
    pins.first()->setFocus(Qt::TabFocusReason);
    for (const QPushButton *pin : pins) {
        QCOMPARE(QApplication::focusWidget(), pin);
        QVERIFY2(isWholeInStrip(w, *pin), qPrintable(pin->text()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    pins.first()->setFocus(Qt::BacktabFocusReason);
    QVERIFY(isWholeInStrip(w, *pins.first()));
}

void tst_MainWindowPins::clickDoesNotScroll()
{
    Window w;
    QVERIFY(w.showActive());
    pinTooMany(w);
    const QList<QPushButton *> pins = w.pinButtons();
    const auto cut = std::find_if(pins.cbegin(), pins.cend(), [&w](const QPushButton *pin) {
        return !isWholeInStrip(w, *pin);
    });
    const int place = (*cut)->x();
    QTest::mousePress(*cut, Qt::LeftButton, {}, QPoint(2, 10));
    QCOMPARE((*cut)->x(), place);
    QTest::mouseRelease(*cut, Qt::LeftButton, {}, QPoint(2, 10));
    QCOMPARE(launched().size(), 1);
}

void tst_MainWindowPins::pinsThatFitDoNotScroll()
{
    Window w;
    QVERIFY(w.showActive());
    const int start = w.pinButtons().first()->x();
    turnWheel(w, {}, QPoint(0, -120));
    QCOMPARE(w.pinButtons().first()->x(), start);
    QCOMPARE(w.strip->layout()->geometry(), w.strip->rect());
}

void tst_MainWindowPins::unpinningScrollsBack()
{
    Window w;
    QVERIFY(w.showActive());
    pinTooMany(w);
    turnWheel(w, {}, QPoint(0, -120'000));
    w.launcher.unpinApp(u"/0.link"_s);
    w.settle();
    QCOMPARE(w.pinButtons().last()->geometry().right(), w.strip->rect().right());
    for (int number = 1; number < 20; ++number) {
        w.launcher.unpinApp(u"/%1.link"_s.arg(number));
    }
    w.settle();
    QCOMPARE(w.strip->layout()->geometry(), w.strip->rect());
    QVERIFY(isWholeInStrip(w, *w.pinButtons().first()));
}

VASKEL_TEST(tst_MainWindowPins, QApplication)
#include "tst_MainWindowPins.moc"
