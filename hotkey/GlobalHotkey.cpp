// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/GlobalHotkey.h"

#include <QHotkey>
#include <QKeySequence>

GlobalHotkey::GlobalHotkey(QObject *parent)
    : QObject(parent)
    , m_mainHotkey(new QHotkey(this))
{
    connect(m_mainHotkey, &QHotkey::activated, this, &GlobalHotkey::activated);
}

bool GlobalHotkey::setMainHotkey(const QString &sequence)
{
    m_mainHotkey->setRegistered(false);
    m_isMainHotkeyHeld = false;

    const QKeySequence keySequence(sequence, QKeySequence::PortableText);
    if (keySequence.isEmpty()) {
        return false;
    }
    const bool isRegistered = m_mainHotkey->setShortcut(keySequence, true);
    m_isMainHotkeyHeld = !isRegistered && QHotkey::isPlatformSupported();
    return isRegistered;
}

bool GlobalHotkey::registerPluginHotkey(const QString &command, const QString &sequence)
{
    const QKeySequence keySequence(sequence, QKeySequence::PortableText);
    if (command.isEmpty() || keySequence.isEmpty()) {
        return false;
    }

    auto *hotkey = new QHotkey(keySequence, true, this);
    connect(hotkey, &QHotkey::activated, this,
            [this, command] { Q_EMIT commandActivated(command); });
    m_pluginHotkeys.insert(command, hotkey);
    return hotkey->isRegistered();
}

void GlobalHotkey::clearPluginHotkeys()
{
    qDeleteAll(m_pluginHotkeys);
    m_pluginHotkeys.clear();
}

bool GlobalHotkey::isMainHotkeyRegistered() const
{
    return m_mainHotkey->isRegistered();
}

bool GlobalHotkey::isPluginHotkeyHeld(const QString &command) const
{
    const QHotkey *hotkey = m_pluginHotkeys.value(command);
    return hotkey && !hotkey->isRegistered() && QHotkey::isPlatformSupported();
}
