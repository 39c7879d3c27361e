// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsBindings.h"

#include "settings/Settings.h"
#include "widgets/HotkeyEdit.h"

#include <QCheckBox>
#include <QComboBox>

#include <algorithm>

namespace {

constexpr char commandProperty[] = "cmd";

QString commandOf(const QWidget *control)
{
    return control->property(commandProperty).toString();
}

} // namespace

SettingsBindings::SettingsBindings(Settings *settings)
    : m_settings(settings)
{
}

void SettingsBindings::bindCheck(QCheckBox *check, bool (Settings::*getter)() const,
                                 void (Settings::*setter)(bool))
{
    m_bindings[Group::Checks].append({
        [=, this] { check->setChecked((m_settings->*getter)()); },
        [=, this] { (m_settings->*setter)(check->isChecked()); },
    });
}

void SettingsBindings::bindGlobalHotkey(HotkeyEdit *edit)
{
    m_bindings[Group::GlobalHotkey].append({
        [=, this] { edit->setHotkey(m_settings->globalHotkey()); },
        [=, this] { m_settings->setGlobalHotkey(edit->hotkey()); },
    });
}

void SettingsBindings::bindSearchEngine(QComboBox *box)
{
    m_bindings[Group::SearchEngine].append({
        [=, this] { box->setCurrentText(m_settings->searchEngine()); },
        [=, this] { m_settings->setSearchEngine(box->currentText()); },
    });
}

void SettingsBindings::bindTheme(QComboBox *box)
{
    m_bindings[Group::Theme].append({
        [=, this] { box->setCurrentIndex(std::max(0, box->findData(m_settings->theme()))); },
        [=, this] { m_settings->setTheme(box->currentData().toString()); },
    });
}

void SettingsBindings::bindPluginCheck(QCheckBox *check, const QString &command)
{
    check->setProperty(commandProperty, command);
    m_bindings[Group::PluginChecks].append({
        [=, this] { check->setChecked(m_settings->isPluginEnabled(commandOf(check))); },
        [=, this] { m_settings->setPluginEnabled(commandOf(check), check->isChecked()); },
    });
}

void SettingsBindings::bindPluginHotkey(HotkeyEdit *edit, const QString &command)
{
    edit->setProperty(commandProperty, command);
    m_bindings[Group::PluginHotkeys].append({
        [=, this] { edit->setHotkey(m_settings->pluginHotkey(commandOf(edit))); },
        [=, this] { m_settings->setPluginHotkey(commandOf(edit), edit->hotkey()); },
    });
}

void SettingsBindings::load() const
{
    for (const Group group : {Group::GlobalHotkey, Group::SearchEngine, Group::Checks, Group::Theme,
                              Group::PluginChecks, Group::PluginHotkeys}) {
        const QList<Binding> bindings = m_bindings.value(group);
        for (const Binding &binding : bindings) {
            binding.load();
        }
    }
}

bool SettingsBindings::save() const
{
    // The setters emit signals, so the order of saving matters to connected slots.
    for (const Group group : {Group::GlobalHotkey, Group::SearchEngine, Group::Theme, Group::Checks,
                              Group::PluginChecks, Group::PluginHotkeys}) {
        const QList<Binding> bindings = m_bindings.value(group);
        for (const Binding &binding : bindings) {
            binding.save();
        }
    }
    return m_settings->writeUnsaved();
}
