// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Settings.h"

#include "platform/AutoStart.h"
#include "settings/SearchEngine.h"

#include <QKeySequence>

using namespace Qt::StringLiterals;

namespace {

// Function keys of the older layout are Windows virtual-key codes, VK_F1 to VK_F12.
constexpr int virtualKeyF1 = 0x70;
constexpr int virtualKeyF12 = 0x7B;
constexpr int virtualKeyToQtKey = int(Qt::Key_F1) - virtualKeyF1;

QString hotkeyOfOlderLayout(int modifiers, int key)
{
    if (key >= virtualKeyF1 && key <= virtualKeyF12) {
        key += virtualKeyToQtKey;
    }
    const auto combination = QKeyCombination::fromCombined(key | modifiers);
    return QKeySequence(combination).toString(QKeySequence::PortableText);
}

QString pluginSwitchKey(const QString &name)
{
    return "plugins/"_L1 + name;
}

QString pluginHotkeyKey(const QString &name)
{
    return "pluginHotkeys/"_L1 + name;
}

} // namespace

Settings::Settings(QObject *parent)
    : QObject(parent)
    , m_settings(u"Vaskel"_s, u"Vaskel"_s)
    , m_autoStart(m_settings.value(u"autoStart"_s, false).toBool())
{
    applyAutoStart(m_autoStart);
}

QString Settings::globalHotkey() const
{
    if (m_settings.contains(u"globalHotkey"_s)) {
        return m_settings.value(u"globalHotkey"_s).toString();
    }
    constexpr int defaultModifiers = int(Qt::ControlModifier) | int(Qt::AltModifier);
    return hotkeyOfOlderLayout(m_settings.value(u"hotkeyModifiers"_s, defaultModifiers).toInt(),
                               m_settings.value(u"hotkeyKey"_s, int(Qt::Key_Space)).toInt());
}

void Settings::setGlobalHotkey(const QString &sequence)
{
    if (storeIfChanged(u"globalHotkey"_s, globalHotkey(), sequence)) {
        Q_EMIT globalHotkeyChanged();
    }
}

QString Settings::searchEngine() const
{
    return m_settings.value(u"searchEngine"_s, defaultSearchEngine.name).toString();
}

void Settings::setSearchEngine(const QString &engine)
{
    if (storeIfChanged(u"searchEngine"_s, searchEngine(), engine)) {
        Q_EMIT searchEngineChanged();
    }
}

bool Settings::autoStart() const
{
    return m_autoStart;
}

void Settings::setAutoStart(bool enabled)
{
    if (enabled == m_autoStart) {
        return;
    }
    m_autoStart = enabled;
    m_settings.setValue(u"autoStart"_s, enabled);
    applyAutoStart(enabled);
    Q_EMIT autoStartChanged();
}

QString Settings::theme() const
{
    return m_settings.value(u"theme"_s, u"system"_s).toString();
}

void Settings::setTheme(const QString &theme)
{
    if (storeIfChanged(u"theme"_s, this->theme(), theme)) {
        Q_EMIT themeChanged();
    }
}

bool Settings::showFloatIcon() const
{
    return m_settings.value(u"showFloatIcon"_s, true).toBool();
}

void Settings::setShowFloatIcon(bool show)
{
    if (storeIfChanged(u"showFloatIcon"_s, showFloatIcon(), show)) {
        Q_EMIT showFloatIconChanged();
    }
}

bool Settings::autoHideOnFocusLoss() const
{
    return m_settings.value(u"autoHideOnFocusLoss"_s, false).toBool();
}

void Settings::setAutoHideOnFocusLoss(bool hide)
{
    if (storeIfChanged(u"autoHideOnFocusLoss"_s, autoHideOnFocusLoss(), hide)) {
        Q_EMIT autoHideOnFocusLossChanged();
    }
}

bool Settings::appLaunchRequiresDoubleClick() const
{
    return m_settings.value(u"appLaunchRequiresDoubleClick"_s, true).toBool();
}

void Settings::setAppLaunchRequiresDoubleClick(bool required)
{
    if (storeIfChanged(u"appLaunchRequiresDoubleClick"_s, appLaunchRequiresDoubleClick(),
                       required)) {
        Q_EMIT appLaunchRequiresDoubleClickChanged();
    }
}

bool Settings::showAllAppsWhenSearchEmpty() const
{
    return m_settings.value(u"showAllAppsWhenSearchEmpty"_s, true).toBool();
}

void Settings::setShowAllAppsWhenSearchEmpty(bool show)
{
    if (storeIfChanged(u"showAllAppsWhenSearchEmpty"_s, showAllAppsWhenSearchEmpty(), show)) {
        Q_EMIT showAllAppsWhenSearchEmptyChanged();
    }
}

bool Settings::isPluginEnabled(const QString &name) const
{
    return m_settings.value(pluginSwitchKey(name), true).toBool();
}

void Settings::setPluginEnabled(const QString &name, bool enabled)
{
    if (storeIfChanged(pluginSwitchKey(name), isPluginEnabled(name), enabled)) {
        Q_EMIT pluginEnabledChanged(name);
    }
}

QString Settings::pluginHotkey(const QString &name) const
{
    return m_settings.value(pluginHotkeyKey(name)).toString();
}

void Settings::setPluginHotkey(const QString &name, const QString &sequence)
{
    if (storeIfChanged(pluginHotkeyKey(name), pluginHotkey(name), sequence)) {
        Q_EMIT pluginHotkeyChanged(name);
    }
}

bool Settings::pluginAutoEnter() const
{
    return m_settings.value(u"pluginAutoEnter"_s, false).toBool();
}

void Settings::setPluginAutoEnter(bool enabled)
{
    if (storeIfChanged(u"pluginAutoEnter"_s, pluginAutoEnter(), enabled)) {
        Q_EMIT pluginAutoEnterChanged();
    }
}

QPoint Settings::floatIconPos() const
{
    return {m_settings.value(u"floatIconX"_s, -1).toInt(),
            m_settings.value(u"floatIconY"_s, -1).toInt()};
}

void Settings::setFloatIconPos(const QPoint &pos)
{
    m_settings.setValue(u"floatIconX"_s, pos.x());
    m_settings.setValue(u"floatIconY"_s, pos.y());
}

void Settings::applyAutoStart(bool enabled)
{
    platform::applyAutoStart(enabled);
}

bool Settings::storeIfChanged(const QString &key, const QString &current, const QString &value)
{
    if (current == value) {
        return false;
    }
    m_settings.setValue(key, value);
    return true;
}

bool Settings::storeIfChanged(const QString &key, bool current, bool value)
{
    if (current == value) {
        return false;
    }
    m_settings.setValue(key, value);
    return true;
}
