// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "support/TestProgram.h"
#include "ui/CommandLineEdit.h"
#include "ui/WindowTest.h"

#include <QCloseEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

/// Activates the other window.
bool activateOther(QWidget &other)
{
    other.show();
    other.activateWindow();
    return QTest::qWaitForWindowActive(&other);
}

/// Waits longer than the delay after which the window checks the focus again.
void waitForFocusCheck()
{
    QTimer timer;
    timer.setSingleShot(true);
    const QSignalSpy timedOut(&timer, &QTimer::timeout);
    timer.start(150);
    QTRY_COMPARE(timedOut.count(), 1);
}

} // namespace

/// Showing and hiding the window.
class tst_MainWindowVisibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void startsHidden();
    void showsWithTheFocusInTheBox();
    void showingKeepsTextCursorAndPosition();
    void showingRaisesTheWindow();
    void showingRestoresAMinimisedWindow_data();
    void showingRestoresAMinimisedWindow();

    void escapeHides_data();
    void escapeHides();
    void closeHides();
    void closeButtonHides();
    void closeEventIsIgnored();
    void quitIsNotBlocked();

    void focusLossHidesIfPreferred_data();
    void focusLossHidesIfPreferred();
    void returningFocusKeepsTheWindow();
    void preferenceTurnedOffInTimeKeepsTheWindow();
    void focusLossDoesNotHideAtOnce();
};

void tst_MainWindowVisibility::startsHidden()
{
    const Window w;
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowVisibility::showsWithTheFocusInTheBox()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.isVisible());
    QVERIFY(w.edit->hasFocus());

    w.list->setFocus();
    w.window.showAndActivate();
    QVERIFY(w.edit->hasFocus());
}

void tst_MainWindowVisibility::showingKeepsTextCursorAndPosition()
{
    Window w;
    w.window.move(30, 40);
    w.enter(u"calc 123"_s);
    w.edit->setCursorPosition(1);
    QVERIFY(w.showActive());
    const QPoint place = w.window.pos();
    w.window.hide();
    QVERIFY(w.showActive());
    QCOMPARE(w.box->text(), u"calc 123"_s);
    QCOMPARE(w.edit->cursorPosition(), 1);
    QVERIFY(!w.edit->hasSelectedText());
    QCOMPARE(w.window.pos(), place);
}

void tst_MainWindowVisibility::showingRaisesTheWindow()
{
    Window w;
    QVERIFY(w.showActive());
    QWidget other;
    QVERIFY(activateOther(other));
    QVERIFY(!w.window.isActiveWindow());
    QVERIFY(w.showActive());
    QVERIFY(w.window.isActiveWindow());
}

void tst_MainWindowVisibility::showingRestoresAMinimisedWindow_data()
{
    QTest::addColumn<bool>("isHiddenToo");
    QTest::newRow("minimised") << false;
    QTest::newRow("minimised and hidden") << true;
}

void tst_MainWindowVisibility::showingRestoresAMinimisedWindow()
{
    QFETCH(bool, isHiddenToo);
    Window w;
    QVERIFY(w.showActive());
    w.window.showMinimized();
    QTRY_VERIFY(w.window.isMinimized());
    w.window.setHidden(isHiddenToo);
    QVERIFY(w.showActive());
    QVERIFY(w.window.isVisible());
    QVERIFY(!w.window.isMinimized());
    QVERIFY(w.edit->hasFocus());
}

void tst_MainWindowVisibility::escapeHides_data()
{
    QTest::addColumn<bool>("onPage");
    QTest::newRow("from the list") << false;
    QTest::newRow("from a page") << true;
}

void tst_MainWindowVisibility::escapeHides()
{
    QFETCH(bool, onPage);
    Window w;
    QVERIFY(w.showActive());
    if (onPage) {
        QVERIFY(w.window.openPluginView(u"todo"_s));
        w.todo.page->setFocusPolicy(Qt::StrongFocus);
        w.todo.page->setFocus();
        QTest::keyClick(w.todo.page, Qt::Key_Escape);
    } else {
        QTest::keyClick(w.edit, Qt::Key_Escape);
    }
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowVisibility::closeHides()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(!w.window.close());
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowVisibility::closeButtonHides()
{
    Window w;
    QVERIFY(w.showActive());
    QTest::mouseClick(&w.closeButton(), Qt::LeftButton);
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowVisibility::closeEventIsIgnored()
{
    Window w;
    QCloseEvent event;
    QCoreApplication::sendEvent(&w.window, &event);
    QVERIFY(!event.isAccepted());
}

void tst_MainWindowVisibility::quitIsNotBlocked()
{
    Window w;
    QVERIFY(w.showActive());
    const QSignalSpy quits(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);
    QTimer::singleShot(0, &w.window, &QCoreApplication::quit);
    QTimer::singleShot(5000, &w.window, [] { QCoreApplication::exit(1); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QCOMPARE(quits.count(), 1);
}

void tst_MainWindowVisibility::focusLossHidesIfPreferred_data()
{
    QTest::addColumn<bool>("preference");
    QTest::newRow("preferred") << true;
    QTest::newRow("not preferred") << false;
}

void tst_MainWindowVisibility::focusLossHidesIfPreferred()
{
    QFETCH(bool, preference);
    Window w;
    w.settings.setAutoHideOnFocusLoss(preference);
    QVERIFY(w.showActive());
    QWidget other;
    QVERIFY(activateOther(other));
    if (preference) {
        QTRY_VERIFY(!w.window.isVisible());
    } else {
        waitForFocusCheck();
        QVERIFY(w.window.isVisible());
    }
}

void tst_MainWindowVisibility::returningFocusKeepsTheWindow()
{
    Window w;
    w.settings.setAutoHideOnFocusLoss(true);
    QVERIFY(w.showActive());
    QEvent deactivate(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(&w.window, &deactivate);
    QVERIFY(w.window.isActiveWindow()); // as if the focus had returned
    waitForFocusCheck();
    QVERIFY(w.window.isVisible());
}

void tst_MainWindowVisibility::preferenceTurnedOffInTimeKeepsTheWindow()
{
    Window w;
    QVERIFY(w.showActive());
    QWidget other;
    QVERIFY(activateOther(other));
    w.settings.setAutoHideOnFocusLoss(true);
    QEvent deactivate(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(&w.window, &deactivate);
    w.settings.setAutoHideOnFocusLoss(false);
    waitForFocusCheck();
    QVERIFY(!w.window.isActiveWindow());
    QVERIFY(w.window.isVisible());
}

void tst_MainWindowVisibility::focusLossDoesNotHideAtOnce()
{
    Window w;
    w.settings.setAutoHideOnFocusLoss(true);
    QVERIFY(w.showActive());
    QEvent deactivate(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(&w.window, &deactivate);
    QVERIFY(w.window.isVisible());
}

VASKEL_TEST(tst_MainWindowVisibility, QApplication)
#include "tst_MainWindowVisibility.moc"
