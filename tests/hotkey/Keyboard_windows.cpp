// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/Keyboard.h"

#include "compat/windows/RealInput.h"

#include <QHash>
#include <QKeyEvent>
#include <QKeySequence>
#include <QProcess>
#include <QTest>
#include <QWidget>

#include <memory>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

QKeyCombination combinationOf(const QString &sequence)
{
    return QKeySequence(sequence, QKeySequence::PortableText)[0];
}

/// Records the keys that it receives.
class Window : public QWidget
{
public:
    QList<int> keys;
    bool wasClicked = false;

protected:
    void keyPressEvent(QKeyEvent *event) override { keys.append(event->key()); }
    void mouseReleaseEvent(QMouseEvent *) override { wasClicked = true; }
};

// The virtual-key codes of letters, digits and the space bar equal Qt's key codes.
UINT codeOf(QKeyCombination combination)
{
    return UINT(combination.key());
}

UINT modifiersOf(QKeyCombination combination)
{
    return (combination.keyboardModifiers() & Qt::ControlModifier ? UINT(MOD_CONTROL) : 0U)
           | (combination.keyboardModifiers() & Qt::AltModifier ? UINT(MOD_ALT) : 0U);
}

/// A program that tries to register one hotkey.
class Holder
{
public:
    explicit Holder(const QString &sequence)
    {
        const QKeyCombination combination = combinationOf(sequence);
        m_process.start(QStringLiteral(HOTKEY_HOLDER), {QString::number(modifiersOf(combination)),
                                                        QString::number(codeOf(combination))});
        if (!m_process.waitForStarted()) {
            qFatal("%s", qUtf8Printable(m_process.errorString()));
        }
    }
    ~Holder()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Holder)

    bool says(const wchar_t *title) const
    {
        for (HWND window = nullptr;
             (window = FindWindowExW(nullptr, window, L"Static", title)) != nullptr;) {
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            if (process == DWORD(m_process.processId())) {
                return true;
            }
        }
        return false;
    }

private:
    QProcess m_process;
};

} // namespace

class Keyboard::Private
{
public:
    Window window;
    QHash<QString, std::shared_ptr<Holder>> holders;
};

Keyboard::Keyboard()
    : d(std::make_unique<Private>())
{
    d->window.resize(300, 200);
    d->window.show();
    // Wine gets the keyboard of the screen with the first click into one of its windows.
    if (!QTest::qWaitForWindowActive(&d->window)) {
        qFatal("the window does not become active: %s", qUtf8Printable(realinput::foreground()));
    }
    const QPoint inside = d->window.mapToGlobal(d->window.rect().center());
    realinput::send({u"mousemove"_s, QString::number(inside.x()), QString::number(inside.y()),
                     u"click"_s, u"1"_s});
    if (!QTest::qWaitFor([this] { return d->window.wasClicked; }, 20000)) {
        qFatal("the click does not arrive: %s", qUtf8Printable(realinput::foreground()));
    }
}

Keyboard::~Keyboard() = default;

void Keyboard::reset()
{
    d->holders.clear();
    d->window.activateWindow();
    d->window.keys.clear();
}

bool Keyboard::isReady() const
{
    return d->window.wasClicked && d->window.isActiveWindow();
}

// Types a further key that is no hotkey. Once that arrives, all keys before it have had their
// effect: hotkey messages are posted before typed keys.
void Keyboard::type(const QString &sequence)
{
    const auto ends = [this] {
        return d->window.keys.count(Qt::Key_End);
    };
    const qsizetype before = ends();
    realinput::send({u"key"_s, u"--delay"_s, u"20"_s, sequence.toLower(), u"End"_s});
    if (!QTest::qWaitFor([&] { return ends() > before; }, 20000)) {
        QStringList keys;
        for (const int key : d->window.keys) {
            keys.append(QKeySequence(key).toString(QKeySequence::PortableText));
        }
        qFatal("the keys do not arrive: the window got \"%s\", %s", qUtf8Printable(keys.join(u' ')),
               qUtf8Printable(realinput::foreground()));
    }
}

int Keyboard::received(const QString &sequence)
{
    return int(d->window.keys.count(combinationOf(sequence).key()));
}

bool Keyboard::grabHotkey(const QString &sequence)
{
    const auto holder = std::make_shared<Holder>(sequence);
    const bool hasAnswered = QTest::qWaitFor(
        [&] { return holder->says(L"holding") || holder->says(L"refused"); }, 60000);
    if (!hasAnswered) {
        qFatal("the other program does not start");
    }
    const bool isHolding = holder->says(L"holding");
    if (isHolding) {
        d->holders.insert(sequence, holder);
    }
    return isHolding;
}

void Keyboard::releaseHotkey(const QString &sequence)
{
    d->holders.remove(sequence);
}

bool Keyboard::isPress(const void *message)
{
    return static_cast<const MSG *>(message)->message == WM_HOTKEY;
}
