// SPDX-License-Identifier: GPL-3.0-or-later
#include <QHotkey>

#include "compat/windows/RealInput.h"
#include "support/TestProgram.h"

#include <QAbstractEventDispatcher>
#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>
#include <QWidget>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

/// Another program that tries to register a hotkey.
class Holder
{
public:
    Holder(UINT modifiers, UINT key)
    {
        m_process.start(QStringLiteral(HOTKEY_HOLDER),
                        {QString::number(modifiers), QString::number(key)});
    }
    ~Holder()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Holder)

    static bool isHolding() { return FindWindowW(L"Static", L"holding") != nullptr; }
    static bool isRefused() { return FindWindowW(L"Static", L"refused") != nullptr; }

private:
    QProcess m_process;
};

/// Records the WM_HOTKEY messages.
class HotkeyMessages : public QAbstractNativeEventFilter
{
public:
    HotkeyMessages() { QCoreApplication::instance()->installNativeEventFilter(this); }

    MSG first() const { return m_messages.constFirst(); }

    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const MSG &event = *static_cast<const MSG *>(message);
        if (event.message == WM_HOTKEY) {
            m_messages.append(event);
        }
        return false;
    }

private:
    QList<MSG> m_messages;
};

class ClickedWindow : public QWidget
{
public:
    bool wasClicked = false;
    int ends = 0; // how often the last key was pressed

protected:
    void keyPressEvent(QKeyEvent *event) override { ends += event->key() == Qt::Key_End; }
    void mouseReleaseEvent(QMouseEvent *) override { wasClicked = true; }
};

} // namespace

class tst_QHotkeyOnWindows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void supportsThisPlatform();
    void activatesOnTheKey_data();
    void activatesOnTheKey();
    void needsExactlyItsModifiers();
    void activatesAllObjectsOfOneSequence();
    void activatesAllSequencesOfOneKey_data();
    void activatesAllSequencesOfOneKey();
    void keepsTheKeyUntilItsLastSequenceGoes();
    void emitsNothingAfterItIsUnregistered();
    void emitsFromTheEventLoop();
    void reportsASequenceThatAnotherProgramHolds();
    void isRefusedToOtherPrograms();
    void unregistersTheSequence();
    void refusesAKeyThatTheKeyboardLacks();

private:
    // Types the keys and then one without a modifier that is no hotkey. Once that arrives, all keys
    // before it have had their effect and are up.
    void type(const QStringList &keys);

    ClickedWindow m_window;
};

void tst_QHotkeyOnWindows::initTestCase()
{
    m_window.resize(300, 200);
    m_window.show();
    QVERIFY(QTest::qWaitForWindowActive(&m_window));
    // Wine gets the keyboard of the screen with the first click into one of its windows.
    const QPoint inside = m_window.mapToGlobal(m_window.rect().center());
    realinput::send({u"mousemove"_s, QString::number(inside.x()), QString::number(inside.y()),
                     u"click"_s, u"1"_s});
    QTRY_VERIFY2(m_window.wasClicked, qPrintable(realinput::foreground()));
    type({});
}

void tst_QHotkeyOnWindows::type(const QStringList &keys)
{
    const int before = m_window.ends;
    realinput::send(QStringList{u"key"_s, u"--delay"_s, u"20"_s} + keys + QStringList(u"End"_s));
    if (!QTest::qWaitFor([&] { return m_window.ends > before; }, 20000)) {
        qFatal("the keys do not arrive: %s", qUtf8Printable(realinput::foreground()));
    }
}

void tst_QHotkeyOnWindows::supportsThisPlatform()
{
    QVERIFY(QHotkey::isPlatformSupported());
}

void tst_QHotkeyOnWindows::activatesOnTheKey_data()
{
    QTest::addColumn<QKeySequence>("sequence");
    QTest::addColumn<QString>("keys");
    QTest::newRow("the default") << QKeySequence(u"Ctrl+Alt+Space"_s) << u"ctrl+alt+space"_s;
    QTest::newRow("letter") << QKeySequence(u"Ctrl+Shift+Y"_s) << u"ctrl+shift+y"_s;
    QTest::newRow("digit") << QKeySequence(u"Ctrl+Alt+7"_s) << u"ctrl+alt+7"_s;
    QTest::newRow("function key alone") << QKeySequence(u"F9"_s) << u"F9"_s;
    QTest::newRow("last function key of a keyboard")
        << QKeySequence(u"Ctrl+F12"_s) << u"ctrl+F12"_s;
    QTest::newRow("named key") << QKeySequence(u"Alt+Home"_s) << u"alt+Home"_s;
    QTest::newRow("arrow") << QKeySequence(u"Ctrl+Shift+Left"_s) << u"ctrl+shift+Left"_s;
    QTest::newRow("character") << QKeySequence(u"Ctrl+Alt+,"_s) << u"ctrl+alt+comma"_s;
    QTest::newRow("shifted character")
        << QKeySequence(u"Ctrl+Alt+?"_s) << u"ctrl+alt+shift+slash"_s;
    QTest::newRow("keypad") << QKeySequence(
        QKeyCombination(Qt::ControlModifier | Qt::KeypadModifier, Qt::Key_Plus))
                            << u"ctrl+KP_Add"_s;
}

void tst_QHotkeyOnWindows::activatesOnTheKey()
{
    QFETCH(QKeySequence, sequence);
    QFETCH(QString, keys);
    const QHotkey hotkey(sequence, true);
    QVERIFY(hotkey.isRegistered());
    const QSignalSpy pressed(&hotkey, &QHotkey::activated);
    type({keys});
    QCOMPARE(pressed.count(), 1);
    type({keys, keys});
    QCOMPARE(pressed.count(), 3);
}

void tst_QHotkeyOnWindows::needsExactlyItsModifiers()
{
    const QHotkey hotkey(QKeySequence(u"Ctrl+Alt+Y"_s), true);
    const QSignalSpy pressed(&hotkey, &QHotkey::activated);
    type({u"y"_s, u"ctrl+y"_s, u"alt+y"_s, u"ctrl+alt+shift+y"_s});
    QCOMPARE(pressed.count(), 0);
    type({u"ctrl+alt+y"_s});
    QCOMPARE(pressed.count(), 1);
}

void tst_QHotkeyOnWindows::activatesAllObjectsOfOneSequence()
{
    const QHotkey first(QKeySequence(u"Ctrl+Alt+Y"_s), true);
    const QHotkey second(QKeySequence(u"Ctrl+Alt+Y"_s), true);
    QVERIFY(first.isRegistered());
    QVERIFY(second.isRegistered());
    const QSignalSpy firstPressed(&first, &QHotkey::activated);
    const QSignalSpy secondPressed(&second, &QHotkey::activated);
    type({u"ctrl+alt+y"_s});
    QCOMPARE(firstPressed.count(), 1);
    QCOMPARE(secondPressed.count(), 1);
}

void tst_QHotkeyOnWindows::activatesAllSequencesOfOneKey_data()
{
    QTest::addColumn<QKeySequence>("one");
    QTest::addColumn<QKeySequence>("other");
    QTest::addColumn<QString>("keys");
    QTest::newRow("Return and Enter")
        << QKeySequence(u"Ctrl+Return"_s) << QKeySequence(u"Ctrl+Enter"_s) << u"ctrl+Return"_s;
    QTest::newRow("Tab and Backtab")
        << QKeySequence(u"Ctrl+Shift+Tab"_s) << QKeySequence(u"Ctrl+Shift+Backtab"_s)
        << u"ctrl+shift+Tab"_s;
    QTest::newRow("character and the key that types it")
        << QKeySequence(u"Ctrl+Alt+?"_s) << QKeySequence(u"Ctrl+Alt+Shift+/"_s)
        << u"ctrl+alt+shift+slash"_s;
}

void tst_QHotkeyOnWindows::activatesAllSequencesOfOneKey()
{
    QFETCH(QKeySequence, one);
    QFETCH(QKeySequence, other);
    QFETCH(QString, keys);
    const QHotkey first(one, true);
    const QHotkey second(other, true);
    QVERIFY(first.isRegistered());
    QVERIFY(second.isRegistered());
    const QSignalSpy firstPressed(&first, &QHotkey::activated);
    const QSignalSpy secondPressed(&second, &QHotkey::activated);
    type({keys});
    QCOMPARE(firstPressed.count(), 1);
    QCOMPARE(secondPressed.count(), 1);
}

void tst_QHotkeyOnWindows::keepsTheKeyUntilItsLastSequenceGoes()
{
    QHotkey first(QKeySequence(u"Ctrl+Return"_s), true);
    QHotkey second(QKeySequence(u"Ctrl+Enter"_s), true);
    const QSignalSpy firstPressed(&first, &QHotkey::activated);
    const QSignalSpy secondPressed(&second, &QHotkey::activated);
    QVERIFY(first.setRegistered(false));
    type({u"ctrl+Return"_s});
    QCOMPARE(firstPressed.count(), 0);
    QCOMPARE(secondPressed.count(), 1);

    QVERIFY(second.setRegistered(false));
    const Holder holder(MOD_CONTROL, VK_RETURN);
    QTRY_VERIFY_WITH_TIMEOUT(Holder::isHolding(), 20000);
}

void tst_QHotkeyOnWindows::emitsNothingAfterItIsUnregistered()
{
    QHotkey hotkey(QKeySequence(u"Ctrl+Alt+Y"_s), true);
    const QSignalSpy pressed(&hotkey, &QHotkey::activated);
    QVERIFY(hotkey.setRegistered(false));
    type({u"ctrl+alt+y"_s});
    QCOMPARE(pressed.count(), 0);
}

void tst_QHotkeyOnWindows::emitsFromTheEventLoop()
{
    const QHotkey hotkey(QKeySequence(u"Ctrl+Alt+Y"_s), true);
    const QSignalSpy pressed(&hotkey, &QHotkey::activated);
    HotkeyMessages messages;
    type({u"ctrl+alt+y"_s});
    QCOMPARE(pressed.count(), 1);

    // Filter the message again: the signal must not come before the event loop runs.
    MSG press = messages.first();
    qintptr result = 0;
    QVERIFY(QAbstractEventDispatcher::instance()->filterNativeEvent("windows_generic_MSG"_ba,
                                                                    &press, &result));
    QCOMPARE(pressed.count(), 1);
    QTRY_COMPARE(pressed.count(), 2);
}

void tst_QHotkeyOnWindows::reportsASequenceThatAnotherProgramHolds()
{
    const Holder holder(MOD_CONTROL | MOD_ALT, 'Y');
    QTRY_VERIFY_WITH_TIMEOUT(Holder::isHolding(), 20000);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(u"refuses.*Ctrl\\+Alt\\+Y.*error 1409"_s));
    const QHotkey hotkey(QKeySequence(u"Ctrl+Alt+Y"_s), true);
    QVERIFY(!hotkey.isRegistered());
    const QSignalSpy pressed(&hotkey, &QHotkey::activated);
    type({u"ctrl+alt+y"_s});
    QCOMPARE(pressed.count(), 0);
}

void tst_QHotkeyOnWindows::isRefusedToOtherPrograms()
{
    const QHotkey hotkey(QKeySequence(u"Ctrl+Alt+Y"_s), true);
    QVERIFY(hotkey.isRegistered());
    const Holder holder(MOD_CONTROL | MOD_ALT, 'Y');
    QTRY_VERIFY_WITH_TIMEOUT(Holder::isRefused(), 20000);
}

void tst_QHotkeyOnWindows::unregistersTheSequence()
{
    {
        const QHotkey hotkey(QKeySequence(u"Ctrl+Alt+Y"_s), true);
        QVERIFY(hotkey.isRegistered());
    }
    const Holder holder(MOD_CONTROL | MOD_ALT, 'Y');
    QTRY_VERIFY_WITH_TIMEOUT(Holder::isHolding(), 20000);
}

void tst_QHotkeyOnWindows::refusesAKeyThatTheKeyboardLacks()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"the keyboard has no key for"_s));
    const QHotkey hotkey(QKeySequence(QKeyCombination(Qt::ControlModifier, Qt::Key(0x4e2d))), true);
    QVERIFY(!hotkey.isRegistered());
}

VASKEL_TEST(tst_QHotkeyOnWindows, QApplication)
#include "tst_QHotkeyOnWindows.moc"
