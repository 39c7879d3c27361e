// SPDX-License-Identifier: GPL-3.0-or-later
#include <QHotkey>

#include "support/TestProgram.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QProcess>
#include <QTest>
#include <QWidget>

#include <memory>
#include <vector>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 limit = 200; // in ms; if the window takes longer, the hold may end before it

/// Another program, whose window has the focus.
class OtherWindow
{
public:
    OtherWindow() { m_process.start(QStringLiteral(OTHER_WINDOW), QStringList()); }
    ~OtherWindow()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(OtherWindow)

    static HWND window() { return FindWindowW(L"OtherWindow", nullptr); }

    static bool isInFront() { return window() && GetForegroundWindow() == window(); }

    /// All letters so far.
    static QString typed()
    {
        wchar_t title[256] = {};
        GetWindowTextW(window(), title, 256);
        return QString::fromWCharArray(title).mid(1);
    }

private:
    QProcess m_process;
};

class Window : public QWidget
{
public:
    QString typed;

protected:
    void keyPressEvent(QKeyEvent *event) override { typed += event->text(); }
};

void type(const std::vector<WORD> &keys)
{
    std::vector<INPUT> inputs;
    const auto add = [&](WORD key, DWORD flags) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.wScan = WORD(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
        input.ki.dwFlags = flags;
        inputs.push_back(input);
    };
    for (const WORD key : keys) {
        add(key, 0);
        add(key, KEYEVENTF_KEYUP);
    }
    SendInput(UINT(inputs.size()), inputs.data(), sizeof(INPUT));
}

void setModifiers(DWORD flags)
{
    for (const WORD key : {WORD(VK_CONTROL), WORD(VK_MENU)}) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = flags;
        SendInput(1, &input, sizeof(INPUT));
    }
}

void pressHotkey()
{
    setModifiers(0);
    type({'Y'});
    setModifiers(KEYEVENTF_KEYUP);
}

// Wine forgets the first request if the other window is just getting the focus of the X server.
bool activate(QWidget *window)
{
    QTest::qWait(int(limit));
    window->activateWindow();
    return false;
}

} // namespace

class tst_KeyboardHoldOnWindows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void bringsTheKeysToTheWindow_data();
    void bringsTheKeysToTheWindow();
    void letsTheKeysGoIfNoWindowShows();
    void letsTheKeysGoAfterAWhile();

private:
    std::unique_ptr<OtherWindow> m_other;
    std::unique_ptr<QHotkey> m_hotkey;
    Window m_window;
};

void tst_KeyboardHoldOnWindows::init()
{
    m_other = std::make_unique<OtherWindow>();
    QTRY_VERIFY_WITH_TIMEOUT(OtherWindow::isInFront(), 20000);
    m_hotkey = std::make_unique<QHotkey>(QKeySequence(u"Ctrl+Alt+Y"_s), true);
    QVERIFY(m_hotkey->isRegistered());
}

void tst_KeyboardHoldOnWindows::cleanup()
{
    m_hotkey.reset();
    m_other.reset();
    m_window.hide();
}

void tst_KeyboardHoldOnWindows::bringsTheKeysToTheWindow_data()
{
    QTest::addColumn<bool>("isShown");
    QTest::newRow("hidden window") << false;
    QTest::newRow("window behind others") << true;
}

void tst_KeyboardHoldOnWindows::bringsTheKeysToTheWindow()
{
    QFETCH(const bool, isShown);
    QElapsedTimer timer;
    bool wasPressed = false;
    connect(m_hotkey.get(), &QHotkey::activated, &m_window, [&] {
        wasPressed = true;
        type({'A', 'B'});
        m_window.show();
        type({'C'});
        m_window.activateWindow();
        type({'D'});
    });
    constexpr int rounds = 20;
    QStringList durations;
    for (int round = 0; round < rounds; ++round) {
        m_window.setVisible(isShown);
        SetForegroundWindow(OtherWindow::window());
        QTRY_VERIFY(OtherWindow::isInFront() && !m_window.isActiveWindow());
        const QString before = OtherWindow::typed();
        m_window.typed.clear();
        wasPressed = false;
        timer.start();
        pressHotkey();
        QTRY_VERIFY(wasPressed);
        QTRY_VERIFY(m_window.isActiveWindow() || activate(&m_window));
        const qint64 duration = timer.elapsed();
        type({'E'});
        QTRY_VERIFY(m_window.typed.endsWith(u'e'));
        if (duration <= limit) {
            QCOMPARE(m_window.typed, u"abcde"_s);
            QCOMPARE(OtherWindow::typed(), before);
            return;
        }
        durations.append(QString::number(duration));
    }
    QFAIL(qPrintable(u"the window got the focus after "_s + durations.join(u", "_s) + u" ms"_s));
}

void tst_KeyboardHoldOnWindows::letsTheKeysGoIfNoWindowShows()
{
    connect(m_hotkey.get(), &QHotkey::activated, this, [] { type({'A', 'B'}); });
    pressHotkey();
    QTRY_COMPARE(OtherWindow::typed(), u"ab"_s);
}

void tst_KeyboardHoldOnWindows::letsTheKeysGoAfterAWhile()
{
    m_window.show();
    SetForegroundWindow(OtherWindow::window());
    QTRY_VERIFY(OtherWindow::isInFront() && !m_window.isActiveWindow());
    connect(m_hotkey.get(), &QHotkey::activated, this, [] { type({'A', 'B'}); });
    pressHotkey();
    QTRY_COMPARE(OtherWindow::typed(), u"ab"_s);
    type({'C'});
    QTRY_COMPARE(OtherWindow::typed(), u"abc"_s);
}

VASKEL_TEST(tst_KeyboardHoldOnWindows, QApplication)
#include "tst_KeyboardHoldOnWindows.moc"
