// SPDX-License-Identifier: GPL-3.0-or-later
#include "qhotkey.h"

#include "SystemHotkeys.h"

#include <QDebug>
#include <QList>

#include <algorithm>

/// The registered hotkeys of this process. Objects with the same combination share one registration
/// with the system.
class HotkeyTable
{
public:
    static HotkeyTable &instance()
    {
        static HotkeyTable table;
        return table;
    }

    bool add(QHotkey *hotkey)
    {
        if (m_hotkeys.isEmpty()) {
            m_system = SystemHotkeys::create([this](QKeyCombination pressed) { notify(pressed); });
        }
        if (!m_system) {
            qWarning() << "QHotkey: this platform has no global hotkeys";
            return false;
        }
        const QKeyCombination combination = hotkey->shortcut()[0];
        const bool isRegistered = isUsed(combination) || m_system->registerHotkey(combination);
        if (isRegistered) {
            m_hotkeys.append(hotkey);
        }
        closeIfUnused();
        return isRegistered;
    }

    void remove(QHotkey *hotkey)
    {
        const QKeyCombination combination = hotkey->shortcut()[0];
        m_hotkeys.removeOne(hotkey);
        if (!isUsed(combination)) {
            m_system->unregisterHotkey(combination);
        }
        closeIfUnused();
    }

private:
    bool isUsed(QKeyCombination combination) const
    {
        return std::any_of(m_hotkeys.begin(), m_hotkeys.end(), [&](const QHotkey *hotkey) {
            return hotkey->shortcut()[0] == combination;
        });
    }

    void closeIfUnused()
    {
        // Release the platform's objects, since this static table may outlive the application
        // object.
        if (m_hotkeys.isEmpty()) {
            m_system.reset();
        }
    }

    void notify(QKeyCombination combination)
    {
        for (QHotkey *hotkey : std::as_const(m_hotkeys)) {
            if (hotkey->shortcut()[0] == combination) {
                QMetaObject::invokeMethod(
                    hotkey, [hotkey] { Q_EMIT hotkey->activated(QHotkey::QPrivateSignal()); },
                    Qt::QueuedConnection);
            }
        }
    }

    QList<QHotkey *> m_hotkeys;
    std::unique_ptr<SystemHotkeys> m_system;
};

bool QHotkey::isPlatformSupported()
{
    return SystemHotkeys::isSupported();
}

QHotkey::QHotkey(QObject *parent)
    : QObject(parent)
{
}

QHotkey::QHotkey(const QKeySequence &shortcut, bool autoRegister, QObject *parent)
    : QObject(parent)
{
    setShortcut(shortcut, autoRegister);
}

QHotkey::~QHotkey()
{
    if (m_registered) {
        HotkeyTable::instance().remove(this);
    }
}

bool QHotkey::isRegistered() const
{
    return m_registered;
}

QKeySequence QHotkey::shortcut() const
{
    return m_shortcut;
}

bool QHotkey::setRegistered(bool registered)
{
    if (registered == m_registered) {
        return true;
    }
    if (registered && (m_shortcut.isEmpty() || !HotkeyTable::instance().add(this))) {
        return false;
    }
    if (!registered) {
        HotkeyTable::instance().remove(this);
    }
    m_registered = registered;
    Q_EMIT registeredChanged(registered);
    return true;
}

bool QHotkey::setShortcut(const QKeySequence &shortcut, bool autoRegister)
{
    if (m_registered && !autoRegister) {
        return false;
    }
    setRegistered(false);
    if (shortcut.count() > 1) {
        qWarning() << "QHotkey: only the first combination is used of" << shortcut;
    }
    m_shortcut = shortcut;
    return !autoRegister || setRegistered(true);
}
