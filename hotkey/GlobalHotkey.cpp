// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/GlobalHotkey.h"

#include "hotkey/QHotkeyHeader.h"

#include <QGuiApplication>
#include <QKeySequence>

using namespace Qt::StringLiterals;

namespace {

// On a platform that it does not support, the library would use an X display that does not exist.
// It reports the offscreen platform as supported, too.
bool isSupported()
{
    return QHotkey::isPlatformSupported() && QGuiApplication::platformName() != "offscreen"_L1;
}

bool registerSequence(QHotkey *hotkey, const QKeySequence &sequence)
{
    if (!isSupported()) {
        qWarning("This platform has no global hotkeys");
        return false;
    }
    // For an unknown key the library registers nothing but returns true, so ask isRegistered().
    return hotkey->setShortcut(sequence, true) && hotkey->isRegistered();
}

} // namespace

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
    const bool isRegistered = registerSequence(m_mainHotkey, keySequence);
    m_isMainHotkeyHeld = !isRegistered && isSupported();
    return isRegistered;
}

bool GlobalHotkey::registerPluginHotkey(const QString &command, const QString &sequence)
{
    const QKeySequence keySequence(sequence, QKeySequence::PortableText);
    if (command.isEmpty() || keySequence.isEmpty()) {
        return false;
    }

    auto *hotkey = new QHotkey(this);
    connect(hotkey, &QHotkey::activated, this,
            [this, command] { Q_EMIT commandActivated(command); });
    m_pluginHotkeys.insert(command, hotkey);
    return registerSequence(hotkey, keySequence);
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
    return hotkey && !hotkey->isRegistered() && isSupported();
}
