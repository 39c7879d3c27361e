// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/HotkeyHints.h"
#include "settings/SettingsBindings.h"

#include <QList>
#include <QWidget>

class PluginManager;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QListWidget;
class QStackedWidget;
class Settings;

/// The settings page. Its controls hold a working copy: Save stores it, Cancel discards it. A hint
/// under a hotkey and the notice of whether Save has saved are widgets of their own, created when
/// first needed.
class SettingsView : public QWidget
{
    Q_OBJECT

public:
    /// The services are not owned and must outlive the page. All plugins must be registered, since
    /// the constructor builds their cards.
    SettingsView(Settings *settings, PluginManager *pluginManager, QWidget *parent = nullptr);
    ~SettingsView() override;

    /// Switches to the page of a command: settingscommand::user, settingscommand::plugin, or any
    /// other for the settings.
    void showPage(const QString &page);

    /// Shows the stored preferences in all controls.
    void reload();

    /// Sets how the page learns that another program holds a hotkey, for the next reload() or Save.
    void setHotkeyCheck(const HotkeyHints::Check &check) { m_hints.setCheck(check); }

    /// Shows these errors in the user's own commands above the plugins. Call it at most once, and
    /// only with errors.
    void addCommandErrors(const QStringList &lines);

    /// Sets how the page learns where a hotkey comes from, for the next reload() or Save.
    void setHotkeyOrigins(const HotkeyHints::Origins &origins) { m_hints.setOrigins(origins); }

    /// Shows anew what holds the stored hotkeys.
    void updateHotkeyHints() { m_hints.refresh(); }

Q_SIGNALS:
    /// The user has pressed Cancel and wants to leave the page.
    void closeRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void buildPages();
    void buildUserPage();
    void buildSettingsPage();
    void buildPluginsPage();
    void buildButtons();
    QBoxLayout *addPage(const QString &title);
    void addCheck(QBoxLayout *layout, const QString &text, bool (Settings::*getter)() const,
                  void (Settings::*setter)(bool));
    void addHotkeyEdit(QBoxLayout *layout);
    void addThemeCombo(QBoxLayout *layout);
    void addSearchEngineCombo(QBoxLayout *layout);
    QComboBox *addCombo(QBoxLayout *layout, const QString &label);
    void addSwitchButtons(QBoxLayout *layout);
    void addPluginCards(QBoxLayout *layout);
    QWidget *buildPluginCard(const QString &command);
    QWidget *buildPluginCheck(const QString &command, QWidget *card);
    QWidget *buildPluginHotkeyEdit(const QString &command, QWidget *card);

    void checkAllPlugins(bool checked);
    void save();

    SettingsBindings m_bindings;
    HotkeyHints m_hints;
    PluginManager *m_pluginManager;
    QListWidget *m_navigation = nullptr;
    QStackedWidget *m_pages = nullptr;
    QDialogButtonBox *m_buttons = nullptr;
    QList<QCheckBox *> m_pluginChecks; // in the order of the cards
};
