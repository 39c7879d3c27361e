// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/HotkeyEdit.h"

#include "support/TestProgram.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// The field between two others, in a window that Escape hides.
struct Field
{
    Field()
    {
        auto *layout = new QVBoxLayout(&window);
        for (QWidget *widget : std::initializer_list<QWidget *>{&before, &edit, &after}) {
            layout->addWidget(widget);
        }
        window.show();
        window.activateWindow();
        edit.setHotkey(u"Ctrl+Alt+Space"_s);
        edit.setFocus();
    }

    ~Field()
    {
        for (QWidget *widget : std::initializer_list<QWidget *>{&before, &edit, &after}) {
            widget->setParent(nullptr);
        }
    }

    Q_DISABLE_COPY_MOVE(Field)

    QString shownText() const { return edit.findChild<QLineEdit *>()->text(); }

    QWidget window;
    QLineEdit before;
    HotkeyEdit edit;
    QLineEdit after;
};

} // namespace

class tst_HotkeyEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesOneCombinationAtOnce_data();
    void takesOneCombinationAtOnce();
    void laterCombinationReplacesTheEarlierOne();
    void heldKeyIsOneCombination();
    void keyThatIsNoHotkeyChangesNothing_data();
    void keyThatIsNoHotkeyChangesNothing();
    void tabKeysMoveOnAndChangeNothing();
    void backspaceAndDeleteEmptyIt_data();
    void backspaceAndDeleteEmptyIt();
    void clearButtonEmptiesIt();
    void escapeReachesTheWindow();
    void otherShortcutsAreRecorded();
    void readsAndWritesThePortableForm_data();
    void readsAndWritesThePortableForm();
    void isAFieldToScreenReaders();
};

void tst_HotkeyEdit::takesOneCombinationAtOnce_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("expected");
    QTest::newRow("letter") << Qt::Key_K << Qt::KeyboardModifiers(Qt::ControlModifier)
                            << u"Ctrl+K"_s;
    QTest::newRow("function key") << Qt::Key_F2 << Qt::KeyboardModifiers() << u"F2"_s;
    QTest::newRow("three modifiers")
        << Qt::Key_F2 << (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier)
        << u"Ctrl+Alt+Shift+F2"_s;
    QTest::newRow("without a modifier") << Qt::Key_A << Qt::KeyboardModifiers() << u"A"_s;
    QTest::newRow("arrow") << Qt::Key_Down << Qt::KeyboardModifiers(Qt::AltModifier)
                           << u"Alt+Down"_s;
    QTest::newRow("backspace with a modifier")
        << Qt::Key_Backspace << Qt::KeyboardModifiers(Qt::ControlModifier) << u"Ctrl+Backspace"_s;
    QTest::newRow("escape with a modifier")
        << Qt::Key_Escape << Qt::KeyboardModifiers(Qt::ControlModifier) << u"Ctrl+Esc"_s;
    QTest::newRow("tab with a modifier")
        << Qt::Key_Tab << Qt::KeyboardModifiers(Qt::ControlModifier) << u"Ctrl+Tab"_s;
}

void tst_HotkeyEdit::takesOneCombinationAtOnce()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const QString, expected);
    Field f;
    QVERIFY(QTest::qWaitForWindowActive(f.window.windowHandle()));
    QTest::keyClick(&f.edit, key, modifiers);
    QCOMPARE(f.edit.hotkey(), expected);
    QCOMPARE(f.shownText(), f.edit.keySequence().toString(QKeySequence::NativeText));
    QVERIFY(f.edit.hasFocus());
}

void tst_HotkeyEdit::laterCombinationReplacesTheEarlierOne()
{
    Field f;
    QTest::keyClick(&f.edit, Qt::Key_K, Qt::ControlModifier);
    QTest::keyClick(&f.edit, Qt::Key_L, Qt::AltModifier);
    QCOMPARE(f.edit.hotkey(), u"Alt+L"_s);
}

void tst_HotkeyEdit::heldKeyIsOneCombination()
{
    Field f;
    QTest::keyPress(&f.edit, Qt::Key_K, Qt::ControlModifier);
    for (int i = 0; i < 5; ++i) {
        QTest::simulateEvent(&f.edit, true, Qt::Key_K, Qt::ControlModifier, u"k"_s, true, -1);
    }
    QTest::keyRelease(&f.edit, Qt::Key_K, Qt::ControlModifier);
    QCOMPARE(f.edit.hotkey(), u"Ctrl+K"_s);
}

void tst_HotkeyEdit::keyThatIsNoHotkeyChangesNothing_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Shift") << Qt::Key_Shift;
    QTest::newRow("Control") << Qt::Key_Control;
    QTest::newRow("Alt") << Qt::Key_Alt;
    QTest::newRow("AltGr") << Qt::Key_AltGr;
    QTest::newRow("Meta") << Qt::Key_Meta;
    QTest::newRow("left Super") << Qt::Key_Super_L;
    QTest::newRow("right Super") << Qt::Key_Super_R;
    QTest::newRow("left Hyper") << Qt::Key_Hyper_L;
    QTest::newRow("right Hyper") << Qt::Key_Hyper_R;
    QTest::newRow("Mode Switch") << Qt::Key_Mode_switch;
    QTest::newRow("Caps Lock") << Qt::Key_CapsLock;
    QTest::newRow("Num Lock") << Qt::Key_NumLock;
    QTest::newRow("Scroll Lock") << Qt::Key_ScrollLock;
    QTest::newRow("a key unknown to Qt") << Qt::Key_unknown;
    QTest::newRow("a key without a code") << Qt::Key(0);
}

void tst_HotkeyEdit::keyThatIsNoHotkeyChangesNothing()
{
    QFETCH(const Qt::Key, key);
    Field f;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QApplication::sendEvent(&f.edit, &event);
        QCOMPARE(f.edit.hotkey(), u"Ctrl+Alt+Space"_s);
    }
    QCOMPARE(f.shownText(), f.edit.keySequence().toString(QKeySequence::NativeText));
}

void tst_HotkeyEdit::tabKeysMoveOnAndChangeNothing()
{
    Field f;
    QVERIFY(QTest::qWaitForWindowActive(f.window.windowHandle()));
    QTest::keyClick(&f.edit, Qt::Key_Tab);
    QVERIFY(f.after.hasFocus());
    f.edit.setFocus();
    QTest::keyPress(&f.edit, Qt::Key_Shift);
    QTest::keyClick(&f.edit, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(f.before.hasFocus());
    QCOMPARE(f.edit.hotkey(), u"Ctrl+Alt+Space"_s);
}

void tst_HotkeyEdit::backspaceAndDeleteEmptyIt_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Backspace") << Qt::Key_Backspace;
    QTest::newRow("Delete") << Qt::Key_Delete;
}

void tst_HotkeyEdit::backspaceAndDeleteEmptyIt()
{
    QFETCH(const Qt::Key, key);
    Field f;
    QTest::keyClick(&f.edit, key);
    QCOMPARE(f.edit.hotkey(), QString());
    QCOMPARE(f.shownText(), QString());
    QTest::keyClick(&f.edit, Qt::Key_F4);
    QCOMPARE(f.edit.hotkey(), u"F4"_s);
}

void tst_HotkeyEdit::clearButtonEmptiesIt()
{
    Field f;
    auto *button = f.edit.findChild<QToolButton *>();
    QVERIFY(button);
    button->click();
    QCOMPARE(f.edit.hotkey(), QString());
}

void tst_HotkeyEdit::escapeReachesTheWindow()
{
    Field f;
    QVERIFY(QTest::qWaitForWindowActive(f.window.windowHandle()));
    const QShortcut shortcut(Qt::Key_Escape, &f.window);
    QSignalSpy escaped(&shortcut, &QShortcut::activated);
    QTest::keyClick(&f.edit, Qt::Key_Escape);
    QCOMPARE(escaped.size(), 1);
    QCOMPARE(f.edit.hotkey(), u"Ctrl+Alt+Space"_s);
}

void tst_HotkeyEdit::otherShortcutsAreRecorded()
{
    Field f;
    QVERIFY(QTest::qWaitForWindowActive(f.window.windowHandle()));
    const QShortcut shortcut(QKeySequence(u"Ctrl+N"_s), &f.window);
    QSignalSpy activated(&shortcut, &QShortcut::activated);
    QTest::keyClick(&f.edit, Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(activated.size(), 0);
    QCOMPARE(f.edit.hotkey(), u"Ctrl+N"_s);
}

void tst_HotkeyEdit::readsAndWritesThePortableForm_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a combination") << u"Meta+Shift+F5"_s << u"Meta+Shift+F5"_s;
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("small letters") << u"ctrl+alt+space"_s << u"Ctrl+Alt+Space"_s;
    QTest::newRow("two combinations") << u"Ctrl+K, Ctrl+C"_s << u"Ctrl+K"_s;
    QTest::newRow("five combinations") << u"A, B, C, D, E"_s << u"A"_s;
    QTest::newRow("no key") << u"Ctrl+Nonsense"_s << QString();
}

void tst_HotkeyEdit::readsAndWritesThePortableForm()
{
    QFETCH(const QString, stored);
    QFETCH(const QString, expected);
    Field f;
    f.edit.setHotkey(stored);
    QCOMPARE(f.edit.hotkey(), expected);
    QCOMPARE(f.shownText(), QKeySequence(expected).toString(QKeySequence::NativeText));
}

void tst_HotkeyEdit::isAFieldToScreenReaders()
{
    Field f;
    f.edit.setAccessibleName(u"Global Hotkey"_s);
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&f.edit);
    QCOMPARE(interface->text(QAccessible::Name), u"Global Hotkey"_s);
    QCOMPARE(interface->role(), QAccessible::EditableText);
    QCOMPARE(interface->text(QAccessible::Value), f.shownText());
    QCOMPARE(interface->textInterface()->text(0, 4), u"Ctrl"_s);
    QVERIFY(interface->state().editable);
    QVERIFY(interface->state().focusable);
    QCOMPARE(interface->childCount(), 0);
}

VASKEL_TEST(tst_HotkeyEdit, QApplication)
#include "tst_HotkeyEdit.moc"
