// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/InputMethodKeys.h"

#include "support/TestProgram.h"
#include "ui/CommandLineEdit.h"
#include "ui/WindowTest.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

void compose(const Window &w, const QString &preedit)
{
    QInputMethodEvent event(preedit, {});
    QCoreApplication::sendEvent(w.edit, &event);
}

void commit(const Window &w, const QString &text, const QString &preedit = {})
{
    QInputMethodEvent event(preedit, {});
    event.setCommitString(text);
    QCoreApplication::sendEvent(w.edit, &event);
}

/// The rectangle of the cursor in the window, where the input method shows its candidates.
QRectF cursorRectangle()
{
    return QGuiApplication::inputMethod()->cursorRectangle();
}

QRect rectangleInWindow(const Window &w, const QWidget &widget)
{
    return {widget.mapTo(&w.window, QPoint()), widget.size()};
}

} // namespace

/// The keys while an input method composes text in the box.
class tst_InputMethodKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void enterDoesNotLaunch_data();
    void enterDoesNotLaunch();
    void arrowsDoNotMoveTheRow_data();
    void arrowsDoNotMoveTheRow();
    void escapeDoesNotHide();
    void tabDoesNotMoveTheFocus_data();
    void tabDoesNotMoveTheFocus();
    void backspaceKeepsTheBadge();
    void rowKeysDoNothing_data();
    void rowKeysDoNothing();
    void lettersReachTheEdit();
    void keysWorkAgainAfterIt_data();
    void keysWorkAgainAfterIt();
    void keysBelongToItBetweenTwoCommits();
    void composedTextIsNoCommandUntilItIsCommitted();

    void candidatesShowAtTheCursor_data();
    void candidatesShowAtTheCursor();
    void candidatesFollowTheBadge();
};

void tst_InputMethodKeys::enterDoesNotLaunch_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void tst_InputMethodKeys::enterDoesNotLaunch()
{
    QFETCH(Qt::Key, key);
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s);
    compose(w, u"ni"_s);
    QTest::keyClick(w.edit, key);
    QCOMPARE(launched(), QStringList());
    QVERIFY(w.window.isVisible());
    QCOMPARE(w.box->text(), u"paint"_s);
}

void tst_InputMethodKeys::arrowsDoNotMoveTheRow_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    const Qt::KeyboardModifiers none;
    const Qt::KeyboardModifiers control = Qt::ControlModifier;
    QTest::newRow("Down") << Qt::Key_Down << none;
    QTest::newRow("Up") << Qt::Key_Up << none;
    QTest::newRow("Ctrl+N") << Qt::Key_N << control;
    QTest::newRow("Ctrl+P") << Qt::Key_P << control;
    QTest::newRow("Page Down") << Qt::Key_PageDown << none;
    QTest::newRow("Page Up") << Qt::Key_PageUp << none;
    QTest::newRow("Ctrl+End") << Qt::Key_End << control;
    QTest::newRow("Ctrl+Home") << Qt::Key_Home << control;
}

void tst_InputMethodKeys::arrowsDoNotMoveTheRow()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    Window w;
    QVERIFY(w.showActive());
    w.list->setCurrentRow(4);
    compose(w, u"ni"_s);
    QTest::keyClick(w.edit, key, modifiers);
    QCOMPARE(w.list->currentRow(), 4);
}

void tst_InputMethodKeys::escapeDoesNotHide()
{
    Window w;
    QVERIFY(w.showActive());
    compose(w, u"ni"_s);
    QTest::keyClick(w.edit, Qt::Key_Escape);
    QVERIFY(w.window.isVisible());
}

void tst_InputMethodKeys::tabDoesNotMoveTheFocus_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Tab") << Qt::Key_Tab;
    QTest::newRow("Shift+Tab") << Qt::Key_Backtab;
}

void tst_InputMethodKeys::tabDoesNotMoveTheFocus()
{
    QFETCH(Qt::Key, key);
    Window w;
    QVERIFY(w.showActive());
    compose(w, u"ni"_s);
    QTest::keyClick(w.edit, key);
    QVERIFY(w.edit->hasFocus());
}

void tst_InputMethodKeys::backspaceKeepsTheBadge()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"calc "_s);
    compose(w, u"ni"_s);
    QTest::keyClick(w.edit, Qt::Key_Backspace);
    QCOMPARE(w.box->text(), u"calc "_s);
}

void tst_InputMethodKeys::rowKeysDoNothing_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Alt+1") << Qt::Key_1 << Qt::KeyboardModifiers(Qt::AltModifier);
    QTest::newRow("Ctrl+D") << Qt::Key_D << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("Ctrl+Return") << Qt::Key_Return << Qt::KeyboardModifiers(Qt::ControlModifier);
}

void tst_InputMethodKeys::rowKeysDoNothing()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s);
    compose(w, u"ni"_s);
    QTest::keyClick(w.edit, key, modifiers);
    QCOMPARE(launched(), QStringList());
    QVERIFY(!w.launcher.isPinned(programPath(2)));
    QVERIFY(w.window.isVisible());
}

// An input method may leave letters to the edit, such as a dead key's.
void tst_InputMethodKeys::lettersReachTheEdit()
{
    Window w;
    QVERIFY(w.showActive());
    compose(w, u"´"_s);
    QTest::keyClicks(w.edit, u"x"_s);
    QCOMPARE(w.box->text(), u"x"_s);
}

void tst_InputMethodKeys::keysWorkAgainAfterIt_data()
{
    QTest::addColumn<QString>("committed");
    QTest::addColumn<QString>("text");
    QTest::newRow("committed") << u"画"_s << u"画"_s;
    QTest::newRow("cancelled") << QString() << QString();
}

void tst_InputMethodKeys::keysWorkAgainAfterIt()
{
    QFETCH(QString, committed);
    Window w;
    QVERIFY(w.showActive());
    compose(w, u"hua"_s);
    commit(w, committed);
    QTEST(w.box->text(), "text");
    QTest::keyClick(w.edit, Qt::Key_Down);
    QCOMPARE(w.list->currentRow(), 1);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(launched(), QStringList(programPath(1)));
}

void tst_InputMethodKeys::keysBelongToItBetweenTwoCommits()
{
    Window w;
    QVERIFY(w.showActive());
    compose(w, u"nihao"_s);
    commit(w, u"你"_s, u"hao"_s);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(launched(), QStringList());
    commit(w, u"好"_s);
    QCOMPARE(w.box->text(), u"你好"_s);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(launched().size(), 1);
}

void tst_InputMethodKeys::composedTextIsNoCommandUntilItIsCommitted()
{
    Window w;
    QVERIFY(w.showActive());
    compose(w, u"calc"_s);
    QCOMPARE(w.box->text(), QString());
    commit(w, u"calc"_s);
    QCOMPARE(w.box->text(), u"calc "_s);
    QVERIFY(!w.box->isComposing());
}

void tst_InputMethodKeys::candidatesShowAtTheCursor_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("preedit");
    QTest::newRow("empty box") << QString() << u"ni"_s;
    QTest::newRow("text") << u"paint"_s << u"ni"_s;
    QTest::newRow("badge") << u"todo "_s << u"ni"_s;
    QTest::newRow("badge and arguments") << u"todo buy milk"_s << u"ni"_s;
}

void tst_InputMethodKeys::candidatesShowAtTheCursor()
{
    QFETCH(QString, text);
    QFETCH(QString, preedit);
    Window w;
    QVERIFY(w.showActive());
    w.enter(text);
    w.settle();
    const QRect edit = rectangleInWindow(w, *w.edit);
    const QFontMetrics metrics = w.edit->fontMetrics();
    const qreal start = cursorRectangle().center().x();
    QVERIFY(QRectF(edit).contains(cursorRectangle().center()));
    const int textWidth = metrics.horizontalAdvance(w.edit->text());
    QVERIFY(qAbs(start - edit.left() - textWidth) < 12); // the padding of the style sheet

    compose(w, preedit);
    w.settle();
    QVERIFY(QRectF(edit).contains(cursorRectangle().center()));
    const qreal moved = cursorRectangle().center().x() - start;
    QVERIFY(qAbs(moved - metrics.horizontalAdvance(preedit)) <= 1);
}

void tst_InputMethodKeys::candidatesFollowTheBadge()
{
    Window w;
    QVERIFY(w.showActive());
    const qreal plain = cursorRectangle().left();
    QTest::keyClicks(w.edit, u"todo"_s);
    w.settle();
    const QRect badge = rectangleInWindow(w, *w.box->findChild<QLabel *>(u"commandBadge"_s));
    QVERIFY(badge.width() > 0);
    QVERIFY(cursorRectangle().left() > badge.right());
    QTest::keyClick(w.edit, Qt::Key_Backspace);
    w.box->setText({});
    w.settle();
    QCOMPARE(cursorRectangle().left(), plain);
}

VASKEL_TEST(tst_InputMethodKeys, QApplication)
#include "tst_InputMethodKeys.moc"
