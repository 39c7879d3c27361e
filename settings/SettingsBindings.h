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

/// Ties each control of the settings page to its preference. A control is bound once and must live
/// as long as the bindings.
class SettingsBindings
{
public:
    /// The settings are not owned and must outlive the bindings.
    explicit SettingsBindings(Settings *settings);

    void bindCheck(QCheckBox *check, bool (Settings::*getter)() const,
                   void (Settings::*setter)(bool));
    void bindGlobalHotkey(HotkeyEdit *edit);
    /// Stores the text of the current item. An engine that is not an item leaves the box as it was.
    void bindSearchEngine(QComboBox *box);
    /// Stores the data of the current item. A theme that is not an item selects the first one.
    void bindTheme(QComboBox *box);

    /// These two note the command in the property "cmd" of the control.
    void bindPluginCheck(QCheckBox *check, const QString &command);
    void bindPluginHotkey(HotkeyEdit *edit, const QString &command);

    /// Fills every control with the stored preference.
    void load() const;

    /// Stores what every control holds.
    void save() const;

    Q_DISABLE_COPY_MOVE(SettingsBindings) // the bindings capture this

private:
    /// Controls that are loaded, and saved, one right after the other, in the order of binding.
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
