// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QWidget>

class HotkeyEdit;
class PluginManager;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QListWidget;
class QStackedWidget;
class Settings;

/// The page on which every preference is changed. Its controls hold a working copy: nothing reaches
/// the settings until Save, and Cancel throws the edits away.
class SettingsView : public QWidget
{
    Q_OBJECT

public:
    /// Neither service is owned; both must outlive the page. All plugins must be registered, since
    /// their cards are built here.
    SettingsView(Settings *settings, PluginManager *pluginManager, QWidget *parent = nullptr);
    ~SettingsView() override;

    /// Turns to the page of a command word: "user", "plugin", or any other for the settings page.
    void showPage(const QString &page);

    /// Fills every control with the stored preference.
    void reload();

Q_SIGNALS:
    /// The user wants to leave the page; emitted by Cancel alone.
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
    QCheckBox *addCheck(QBoxLayout *layout, const QString &text);
    QComboBox *addCombo(QBoxLayout *layout, const QString &label);
    void addSwitchButtons(QBoxLayout *layout);
    void addPluginCards(QBoxLayout *layout);
    QWidget *buildPluginCard(const QString &command);
    QCheckBox *buildPluginCheck(const QString &command, QWidget *card);
    HotkeyEdit *buildPluginHotkeyEdit(const QString &command, QWidget *card);

    void apply();
    void checkAllPlugins(bool checked);

    Settings *m_settings;
    PluginManager *m_pluginManager;
    QListWidget *m_navigation = nullptr;
    QStackedWidget *m_pages = nullptr;
    QDialogButtonBox *m_buttons = nullptr;
    HotkeyEdit *m_hotkeyEdit = nullptr;
    QComboBox *m_themeCombo = nullptr;
    QComboBox *m_searchEngineCombo = nullptr;
    QCheckBox *m_autoStartCheck = nullptr;
    QCheckBox *m_showFloatIconCheck = nullptr;
    QCheckBox *m_autoHideCheck = nullptr;
    QCheckBox *m_doubleClickCheck = nullptr;
    QCheckBox *m_showAllAppsCheck = nullptr;
    QCheckBox *m_autoEnterCheck = nullptr;
    // In the order of the cards; the property "cmd" ties each to its plugin.
    QList<QCheckBox *> m_pluginChecks;
    QList<HotkeyEdit *> m_pluginHotkeyEdits;
};
