// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemHotkeys.h"

#include "WindowsKey.h"

#include <QAbstractNativeEventFilter>
#include <QDebug>
#include <QGuiApplication>
#include <QKeySequence>
#include <QList>

#include <algorithm>
#include <utility>

#include <windows.h>

namespace {

// Beyond it lie the numbers that libraries share among themselves.
constexpr int lastProgramId = 0xbfff;

/// A key that the system reports, with all combinations that it is known by.
struct HeldKey
{
    WindowsKey key;
    int id = 0;
    QList<QKeyCombination> combinations;
};

/// Holds keys for the thread, which gets a message for each press. The system gives a key to one
/// holder only, even within a program.
class WindowsHotkeys final : public SystemHotkeys, private QAbstractNativeEventFilter
{
public:
    explicit WindowsHotkeys(Pressed pressed)
        : m_pressed(std::move(pressed))
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    ~WindowsHotkeys() override
    {
        for (const HeldKey &held : std::as_const(m_held)) {
            UnregisterHotKey(nullptr, held.id);
        }
    }

    bool hold(QKeyCombination combination) override
    {
        const std::optional<WindowsKey> key = windowsKey(combination);
        if (!key) {
            qWarning() << "QHotkey: the keyboard has no key for" << QKeySequence(combination);
            return false;
        }
        const auto held = std::find_if(m_held.begin(), m_held.end(),
                                       [&](const HeldKey &other) { return other.key == *key; });
        if (held != m_held.end()) {
            held->combinations.append(combination);
            return true;
        }
        const int id = freeId();
        if (!RegisterHotKey(nullptr, id, key->modifiers | MOD_NOREPEAT, key->code)) {
            const DWORD error = GetLastError();
            qWarning().nospace() << "QHotkey: the system refuses " << QKeySequence(combination)
                                 << ", error " << error << ": "
                                 << qUtf8Printable(qt_error_string(int(error)));
            return false;
        }
        m_held.append({*key, id, {combination}});
        return true;
    }

    void release(QKeyCombination combination) override
    {
        const auto held = std::find_if(m_held.begin(), m_held.end(), [&](const HeldKey &candidate) {
            return candidate.combinations.contains(combination);
        });
        if (held == m_held.end()) {
            return;
        }
        held->combinations.removeOne(combination);
        if (held->combinations.isEmpty()) {
            UnregisterHotKey(nullptr, held->id);
            m_held.erase(held);
        }
    }

private:
    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *event = static_cast<const MSG *>(message);
        if (event->message != WM_HOTKEY) {
            return false;
        }
        // A press of a key that has been released since is nobody's any more.
        const auto held = findId(int(event->wParam));
        if (held == m_held.cend()) {
            return false;
        }
        for (const QKeyCombination combination : held->combinations) {
            m_pressed(combination);
        }
        return true;
    }

    QList<HeldKey>::const_iterator findId(int id) const
    {
        return std::find_if(m_held.cbegin(), m_held.cend(),
                            [id](const HeldKey &held) { return held.id == id; });
    }

    int freeId()
    {
        do {
            m_lastId = m_lastId % lastProgramId + 1;
        } while (findId(m_lastId) != m_held.cend());
        return m_lastId;
    }

    Pressed m_pressed;
    QList<HeldKey> m_held;
    int m_lastId = 0;
};

} // namespace

std::unique_ptr<SystemHotkeys> SystemHotkeys::create(Pressed pressed)
{
    return isSupported() ? std::make_unique<WindowsHotkeys>(std::move(pressed)) : nullptr;
}

bool SystemHotkeys::isSupported()
{
    return QGuiApplication::platformName() == QLatin1StringView("windows");
}
