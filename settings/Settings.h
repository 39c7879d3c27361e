// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPoint>
#include <QSettings>
#include <QString>

/// Every persistent preference of the program. Getters read the store, where "Vaskel" is both the
/// organisation and the application; setters compare, write, then emit, and do nothing at all when
/// the value is the stored one. Failures of the store are silent. Nothing in the program reads the
/// properties or calls the invokable functions by name, and it connects the signals of only six
/// preferences, which docs/ARCHITECTURE.md lists.
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
    /// Opens the store and brings the start at log-in into step with the stored flag, so that a
    /// program that was moved repairs its own entry.
    explicit Settings(QObject *parent = nullptr);

    /// The main hotkey in QKeySequence::PortableText form. A store that has no such key yet is read
    /// by the older pair "hotkeyModifiers" and "hotkeyKey", which yields Ctrl+Alt+Space by default.
    QString globalHotkey() const;
    void setGlobalHotkey(const QString &sequence);

    /// The name of the web search engine, from settings/SearchEngine.h.
    QString searchEngine() const;
    void setSearchEngine(const QString &engine);

    /// Whether the program starts at log-in: what was last asked for, not what the system holds.
    bool autoStart() const;
    void setAutoStart(bool enabled);

    /// The theme's name, as ThemeManager takes it.
    QString theme() const;
    void setTheme(const QString &theme);

    bool showFloatIcon() const;
    void setShowFloatIcon(bool show);

    /// Whether the window hides when it loses the focus.
    bool autoHideOnFocusLoss() const;
    void setAutoHideOnFocusLoss(bool hide);

    /// Whether a row of the application search is started by a double instead of a single click.
    bool appLaunchRequiresDoubleClick() const;
    void setAppLaunchRequiresDoubleClick(bool required);

    /// Whether an empty command box lists all applications.
    bool showAllAppsWhenSearchEmpty() const;
    void setShowAllAppsWhenSearchEmpty(bool show);

    /// The switch of a plugin, under its command word in lower case.
    Q_INVOKABLE bool isPluginEnabled(const QString &name) const;
    Q_INVOKABLE void setPluginEnabled(const QString &name, bool enabled);

    /// The hotkey of a plugin in QKeySequence::PortableText form; empty means none.
    QString pluginHotkey(const QString &name) const;
    void setPluginHotkey(const QString &name, const QString &sequence);

    /// Whether a command with a page opens it as soon as its word is typed.
    Q_INVOKABLE bool pluginAutoEnter() const;
    Q_INVOKABLE void setPluginAutoEnter(bool enabled);

    /// The floating icon's position in screen pixels; (-1, -1) if it was never placed.
    Q_INVOKABLE QPoint floatIconPos() const;
    /// Writes at every call, changed or not.
    Q_INVOKABLE void setFloatIconPos(const QPoint &pos);

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

    QSettings m_settings;
    bool m_autoStart = false;
};
