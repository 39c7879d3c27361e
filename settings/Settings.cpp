// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Settings.h"

#include "platform/AutoStart.h"
#include "settings/SearchEngine.h"
#include "settings/ThemeManager.h"

#include <QKeySequence>

using namespace Qt::StringLiterals;

namespace {

// The older keys store function keys as the Windows virtual-key codes VK_F1 to VK_F12.
constexpr int virtualKeyF1 = 0x70;
constexpr int virtualKeyF12 = 0x7B;
constexpr int virtualKeyToQtKey = int(Qt::Key_F1) - virtualKeyF1;

QString hotkeyFromOlderKeys(int modifiers, int key)
{
    if (key >= virtualKeyF1 && key <= virtualKeyF12) {
        key += virtualKeyToQtKey;
    }
    const auto combination = QKeyCombination::fromCombined(key | modifiers);
    return QKeySequence(combination).toString(QKeySequence::PortableText);
}

/// A key of the store and its default value. Literal is a type of constants that converts to Value.
template <typename Value, typename Literal = Value> struct Preference
{
    QLatin1StringView key; ///< or the prefix of a group with one key per command
    Literal defaultValue;

    Value read(const SettingsStore &store, const QString &command = {}) const
    {
        return store.value(key + command, defaultValue).template value<Value>();
    }

    /// Writes the value unless it equals read(). Returns whether it was written.
    bool writeIfChanged(SettingsStore &store, const Value &value, const QString &command = {}) const
    {
        if (value == read(store, command)) {
            return false;
        }
        store.setValue(key + command, value);
        return true;
    }
};

using Switch = Preference<bool>;
using Number = Preference<int>;
using Text = Preference<QString, QLatin1StringView>;

namespace preferences {

constexpr Text globalHotkey{"globalHotkey"_L1, ""_L1}; // the default is hotkeyFromOlderKeys()
constexpr Text searchEngine{"searchEngine"_L1, defaultSearchEngine.name};
constexpr Switch pluginAutoEnter{"pluginAutoEnter"_L1, false};
constexpr Switch autoStart{"autoStart"_L1, false};
constexpr Text theme{"theme"_L1, ThemeManager::systemTheme};
constexpr Switch showFloatIcon{"showFloatIcon"_L1, true};
constexpr Switch autoHideOnFocusLoss{"autoHideOnFocusLoss"_L1, false};
constexpr Switch appLaunchRequiresDoubleClick{"appLaunchRequiresDoubleClick"_L1, true};
constexpr Switch showAllAppsWhenSearchEmpty{"showAllAppsWhenSearchEmpty"_L1, true};
constexpr Switch pluginEnabled{"plugins/"_L1, true};
constexpr Text pluginHotkey{"pluginHotkeys/"_L1, ""_L1};
constexpr Number floatIconX{"floatIconX"_L1, -1};
constexpr Number floatIconY{"floatIconY"_L1, -1};
constexpr Preference<QPoint> windowPosition{"windowPosition"_L1, {}}; // the default is not used

// The older keys of the main hotkey.
constexpr Number hotkeyModifiers{"hotkeyModifiers"_L1,
                                 int(Qt::ControlModifier) | int(Qt::AltModifier)};
constexpr Number hotkeyKey{"hotkeyKey"_L1, int(Qt::Key_Space)};

} // namespace preferences

} // namespace

Settings::Settings(QObject *parent)
    : QObject(parent)
    , m_settings(u"Vaskel"_s, u"Vaskel"_s)
    , m_autoStart(preferences::autoStart.read(m_settings))
{
    applyAutoStart(m_autoStart);
}

QString Settings::globalHotkey() const
{
    if (m_settings.contains(preferences::globalHotkey.key)) {
        return preferences::globalHotkey.read(m_settings);
    }
    return hotkeyFromOlderKeys(preferences::hotkeyModifiers.read(m_settings),
                               preferences::hotkeyKey.read(m_settings));
}

void Settings::setGlobalHotkey(const QString &sequence)
{
    // Not writeIfChanged(): the current hotkey may come from the older keys.
    if (sequence == globalHotkey()) {
        return;
    }
    m_settings.setValue(preferences::globalHotkey.key, sequence);
    Q_EMIT globalHotkeyChanged();
}

QString Settings::searchEngine() const
{
    return preferences::searchEngine.read(m_settings);
}

void Settings::setSearchEngine(const QString &engine)
{
    if (preferences::searchEngine.writeIfChanged(m_settings, engine)) {
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
    m_settings.setValue(preferences::autoStart.key, enabled);
    applyAutoStart(enabled);
    Q_EMIT autoStartChanged();
}

QString Settings::theme() const
{
    return preferences::theme.read(m_settings);
}

void Settings::setTheme(const QString &theme)
{
    if (preferences::theme.writeIfChanged(m_settings, theme)) {
        Q_EMIT themeChanged();
    }
}

bool Settings::showFloatIcon() const
{
    return preferences::showFloatIcon.read(m_settings);
}

void Settings::setShowFloatIcon(bool show)
{
    if (preferences::showFloatIcon.writeIfChanged(m_settings, show)) {
        Q_EMIT showFloatIconChanged();
    }
}

bool Settings::autoHideOnFocusLoss() const
{
    return preferences::autoHideOnFocusLoss.read(m_settings);
}

void Settings::setAutoHideOnFocusLoss(bool hide)
{
    if (preferences::autoHideOnFocusLoss.writeIfChanged(m_settings, hide)) {
        Q_EMIT autoHideOnFocusLossChanged();
    }
}

bool Settings::appLaunchRequiresDoubleClick() const
{
    return preferences::appLaunchRequiresDoubleClick.read(m_settings);
}

void Settings::setAppLaunchRequiresDoubleClick(bool required)
{
    if (preferences::appLaunchRequiresDoubleClick.writeIfChanged(m_settings, required)) {
        Q_EMIT appLaunchRequiresDoubleClickChanged();
    }
}

bool Settings::showAllAppsWhenSearchEmpty() const
{
    return preferences::showAllAppsWhenSearchEmpty.read(m_settings);
}

void Settings::setShowAllAppsWhenSearchEmpty(bool show)
{
    if (preferences::showAllAppsWhenSearchEmpty.writeIfChanged(m_settings, show)) {
        Q_EMIT showAllAppsWhenSearchEmptyChanged();
    }
}

bool Settings::isPluginEnabled(const QString &name) const
{
    return preferences::pluginEnabled.read(m_settings, name);
}

void Settings::setPluginEnabled(const QString &name, bool enabled)
{
    if (preferences::pluginEnabled.writeIfChanged(m_settings, enabled, name)) {
        Q_EMIT pluginEnabledChanged(name);
    }
}

QString Settings::pluginHotkey(const QString &name) const
{
    return preferences::pluginHotkey.read(m_settings, name);
}

void Settings::setPluginHotkey(const QString &name, const QString &sequence)
{
    if (preferences::pluginHotkey.writeIfChanged(m_settings, sequence, name)) {
        Q_EMIT pluginHotkeyChanged(name);
    }
}

bool Settings::pluginAutoEnter() const
{
    return preferences::pluginAutoEnter.read(m_settings);
}

void Settings::setPluginAutoEnter(bool enabled)
{
    if (preferences::pluginAutoEnter.writeIfChanged(m_settings, enabled)) {
        Q_EMIT pluginAutoEnterChanged();
    }
}

QPoint Settings::floatIconPos() const
{
    return {preferences::floatIconX.read(m_settings), preferences::floatIconY.read(m_settings)};
}

void Settings::setFloatIconPos(const QPoint &pos)
{
    m_settings.setValue(preferences::floatIconX.key, pos.x());
    m_settings.setValue(preferences::floatIconY.key, pos.y());
}

std::optional<QPoint> Settings::windowPosition() const
{
    // A damaged value is no point.
    if (m_settings.value(preferences::windowPosition.key).typeId() != QMetaType::QPoint) {
        return std::nullopt;
    }
    return preferences::windowPosition.read(m_settings);
}

void Settings::setWindowPosition(const QPoint &position)
{
    m_settings.setValue(preferences::windowPosition.key, position);
}

bool Settings::writeUnsaved()
{
    return m_settings.writeUnsaved();
}

void Settings::applyAutoStart(bool enabled)
{
    platform::applyAutoStart(enabled);
}
