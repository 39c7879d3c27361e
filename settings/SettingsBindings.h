// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include <functional>

class HotkeyEdit;
class QCheckBox;
class QComboBox;
class Settings;

/// Connects the controls of the settings page to the preferences. Bind each control once; it must
/// live as long as the bindings.
class SettingsBindings
{
public:
    /// The settings are not owned and must outlive the bindings.
    explicit SettingsBindings(Settings *settings);

    void bindCheck(QCheckBox *check, bool (Settings::*getter)() const,
                   void (Settings::*setter)(bool));
    void bindGlobalHotkey(HotkeyEdit *edit);
    /// Saves the text of the current item. Loading an unknown engine does not change the box.
    void bindSearchEngine(QComboBox *box);
    /// Saves the data of the current item. Loading an unknown theme selects the first item.
    void bindTheme(QComboBox *box);

    /// These two store the command in the property "cmd" of the control.
    void bindPluginCheck(QCheckBox *check, const QString &command);
    void bindPluginHotkey(HotkeyEdit *edit, const QString &command);

    /// Shows the stored preferences in the controls.
    void load() const;

    /// Passes the values of the controls to the preferences. Returns whether all are written.
    bool save() const;

    Q_DISABLE_COPY_MOVE(SettingsBindings) // the bindings capture this

private:
    /// Groups of controls, loaded and saved together and in the order of binding.
    enum class Group {
        GlobalHotkey,
        SearchEngine,
        Theme,
        Checks,
        PluginChecks,
        PluginHotkeys,
    };

    struct Binding
    {
        std::function<void()> load;
        std::function<void()> save;
    };

    Settings *m_settings;
    QMap<Group, QList<Binding>> m_bindings;
};
