// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemHotkeys.h"

#include "WindowsKey.h"
#include "WindowsKeyboardHold.h"

#include <QAbstractNativeEventFilter>
#include <QDebug>
#include <QGuiApplication>
#include <QKeySequence>
#include <QList>

#include <algorithm>
#include <utility>

#include <windows.h>

namespace {

// Higher numbers are reserved for shared libraries.
constexpr int lastProgramId = 0xbfff;

/// A registered key with all combinations that map to it.
struct RegisteredKey
{
    WindowsKey key;
    int id = 0;
    QList<QKeyCombination> combinations;
};

/// Registers hotkeys for the thread, which gets a message for each press. Windows registers a key
/// only once, even within one program.
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
        for (const RegisteredKey &entry : std::as_const(m_keys)) {
            UnregisterHotKey(nullptr, entry.id);
        }
    }

    bool registerHotkey(QKeyCombination combination) override
    {
        const std::optional<WindowsKey> key = windowsKey(combination);
        if (!key) {
            qWarning() << "QHotkey: the keyboard has no key for" << QKeySequence(combination);
            return false;
        }
        const auto entry =
            std::find_if(m_keys.begin(), m_keys.end(),
                         [&](const RegisteredKey &other) { return other.key == *key; });
        if (entry != m_keys.end()) {
            entry->combinations.append(combination);
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
        m_keys.append({*key, id, {combination}});
        return true;
    }

    void unregisterHotkey(QKeyCombination combination) override
    {
        const auto entry =
            std::find_if(m_keys.begin(), m_keys.end(), [&](const RegisteredKey &candidate) {
                return candidate.combinations.contains(combination);
            });
        if (entry == m_keys.end()) {
            return;
        }
        entry->combinations.removeOne(combination);
        if (entry->combinations.isEmpty()) {
            UnregisterHotKey(nullptr, entry->id);
            m_keys.erase(entry);
        }
    }

private:
    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *event = static_cast<const MSG *>(message);
        if (event->message != WM_HOTKEY) {
            return false;
        }
        // The message may arrive after the key was unregistered.
        const auto entry = findId(int(event->wParam));
        if (entry == m_keys.cend()) {
            return false;
        }
        m_hold.begin(entry->key.code);
        for (const QKeyCombination combination : entry->combinations) {
            m_pressed(combination);
        }
        // After what the press has queued.
        QMetaObject::invokeMethod(&m_hold, &WindowsKeyboardHold::endWithFocus,
                                  Qt::QueuedConnection);
        return true;
    }

    QList<RegisteredKey>::const_iterator findId(int id) const
    {
        return std::find_if(m_keys.cbegin(), m_keys.cend(),
                            [id](const RegisteredKey &entry) { return entry.id == id; });
    }

    int freeId()
    {
        do {
            m_lastId = m_lastId % lastProgramId + 1;
        } while (findId(m_lastId) != m_keys.cend());
        return m_lastId;
    }

    Pressed m_pressed;
    QList<RegisteredKey> m_keys;
    WindowsKeyboardHold m_hold;
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
