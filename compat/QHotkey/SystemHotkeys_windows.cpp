// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemHotkeys.h"

#include "WindowsKey.h"

#include <QAbstractNativeEventFilter>
#include <QDebug>
#include <QGuiApplication>
#include <QHash>
#include <QKeySequence>

#include <algorithm>
#include <utility>

#include <windows.h>

namespace {

// Beyond it lie the numbers that libraries share among themselves.
constexpr int lastProgramId = 0xbfff;

/// Holds combinations for the thread, which gets a message for each press.
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
        for (const int id : std::as_const(m_ids)) {
            UnregisterHotKey(nullptr, id);
        }
    }

    bool hold(QKeyCombination combination) override
    {
        const std::optional<WindowsKey> key = windowsKey(combination);
        if (!key) {
            qWarning() << "QHotkey: the keyboard has no key for" << QKeySequence(combination);
            return false;
        }
        const int id = freeId();
        if (!RegisterHotKey(nullptr, id, key->modifiers | MOD_NOREPEAT, key->code)) {
            qWarning() << "QHotkey: another program holds" << QKeySequence(combination);
            return false;
        }
        m_ids.insert(combination, id);
        return true;
    }

    void release(QKeyCombination combination) override
    {
        const auto id = m_ids.constFind(combination);
        if (id != m_ids.cend()) {
            UnregisterHotKey(nullptr, id.value());
            m_ids.erase(id);
        }
    }

private:
    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *event = static_cast<const MSG *>(message);
        if (event->message != WM_HOTKEY) {
            return false;
        }
        // A press of a combination that has been released since is nobody's any more.
        const auto held = std::find(m_ids.cbegin(), m_ids.cend(), int(event->wParam));
        if (held == m_ids.cend()) {
            return false;
        }
        m_pressed(held.key());
        return true;
    }

    int freeId()
    {
        do {
            m_lastId = m_lastId % lastProgramId + 1;
        } while (m_ids.values().contains(m_lastId));
        return m_lastId;
    }

    Pressed m_pressed;
    QHash<QKeyCombination, int> m_ids;
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
