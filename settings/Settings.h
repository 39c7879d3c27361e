// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/SettingsStore.h"

#include <QObject>
#include <QPoint>
#include <QString>

#include <optional>

/// The preferences of the program. Getters read the store, whose organisation and application are
/// both named "Vaskel". Setters write and emit only if the value changes; a value that cannot be
/// written counts until the program ends. Nothing in the program reads the properties or calls the
/// invokable functions by name, and it connects the signals of only six preferences, which
/// docs/ARCHITECTURE.md lists.
class Settings : public QObject
{
    Q_OBJECT
    Q_PROPERTY(
        QString globalHotkey READ globalHotkey WRITE setGlobalHotkey NOTIFY globalHotkeyChanged)
    Q_PROPERTY(
        QString searchEngine READ searchEngine WRITE setSearchEngine NOTIFY searchEngineChanged)
    Q_PROPERTY(bool pluginAutoEnter READ pluginAutoEnter WRITE setPluginAutoEnter NOTIFY
                   pluginAutoEnterChanged)
    Q_PROPERTY(bool autoStart READ autoStart WRITE setAutoStart NOTIFY autoStartChanged)
    Q_PROPERTY(QString theme READ theme WRITE setTheme NOTIFY themeChanged)
    Q_PROPERTY(
        bool showFloatIcon READ showFloatIcon WRITE setShowFloatIcon NOTIFY showFloatIconChanged)
    Q_PROPERTY(bool autoHideOnFocusLoss READ autoHideOnFocusLoss WRITE setAutoHideOnFocusLoss NOTIFY
                   autoHideOnFocusLossChanged)
    Q_PROPERTY(bool appLaunchRequiresDoubleClick READ appLaunchRequiresDoubleClick WRITE
                   setAppLaunchRequiresDoubleClick NOTIFY appLaunchRequiresDoubleClickChanged)
    Q_PROPERTY(bool showAllAppsWhenSearchEmpty READ showAllAppsWhenSearchEmpty WRITE
                   setShowAllAppsWhenSearchEmpty NOTIFY showAllAppsWhenSearchEmptyChanged)

public:
    /// Opens the store and applies autoStart() to the system, so that the entry for log-in follows
    /// a program that was moved.
    explicit Settings(QObject *parent = nullptr);

    /// The main hotkey as QKeySequence::PortableText. If the store lacks it, it is read from the
    /// older keys "hotkeyModifiers" and "hotkeyKey", whose default is Ctrl+Alt+Space.
    QString globalHotkey() const;
    void setGlobalHotkey(const QString &sequence);

    /// The name of the web search engine; see settings/SearchEngine.h.
    QString searchEngine() const;
    void setSearchEngine(const QString &engine);

    /// Whether the program starts at log-in. This is the stored preference; the system is not
    /// asked.
    bool autoStart() const;
    void setAutoStart(bool enabled);

    /// The name of the theme for ThemeManager::setTheme().
    QString theme() const;
    void setTheme(const QString &theme);

    bool showFloatIcon() const;
    void setShowFloatIcon(bool show);

    /// Whether the window hides when it loses the focus.
    bool autoHideOnFocusLoss() const;
    void setAutoHideOnFocusLoss(bool hide);

    /// Whether programs are launched by a double click instead of a single one.
    bool appLaunchRequiresDoubleClick() const;
    void setAppLaunchRequiresDoubleClick(bool required);

    /// Whether an empty command box lists all programs.
    bool showAllAppsWhenSearchEmpty() const;
    void setShowAllAppsWhenSearchEmpty(bool show);

    /// Whether a plugin is enabled. The name of a plugin is its command, in lower case.
    Q_INVOKABLE bool isPluginEnabled(const QString &name) const;
    Q_INVOKABLE void setPluginEnabled(const QString &name, bool enabled);

    /// The hotkey of a plugin as QKeySequence::PortableText; empty for none.
    QString pluginHotkey(const QString &name) const;
    void setPluginHotkey(const QString &name, const QString &sequence);

    /// Whether a command with a page opens it as soon as the command and a blank are typed.
    Q_INVOKABLE bool pluginAutoEnter() const;
    Q_INVOKABLE void setPluginAutoEnter(bool enabled);

    /// The position of the floating icon in screen pixels; (-1, -1) if it was never moved.
    Q_INVOKABLE QPoint floatIconPos() const;
    /// Always writes, even the same position.
    Q_INVOKABLE void setFloatIconPos(const QPoint &pos);

    /// Where the user last dragged the window, the position of its top left corner in screen
    /// pixels; nothing if it was never dragged.
    std::optional<QPoint> windowPosition() const;
    /// Always writes, even the same position.
    void setWindowPosition(const QPoint &position);

    /// Writes the values that could not be written before. Returns whether none is left.
    bool writeUnsaved();

Q_SIGNALS:
    void globalHotkeyChanged();
    void searchEngineChanged();
    void pluginAutoEnterChanged();
    void pluginEnabledChanged(const QString &name);
    void pluginHotkeyChanged(const QString &name);
    void autoStartChanged();
    void themeChanged();
    void showFloatIconChanged();
    void autoHideOnFocusLossChanged();
    void appLaunchRequiresDoubleClickChanged();
    void showAllAppsWhenSearchEmptyChanged();

private:
    void applyAutoStart(bool enabled);

    SettingsStore m_settings;
    bool m_autoStart = false;
};
