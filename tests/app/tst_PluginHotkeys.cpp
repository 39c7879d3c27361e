// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HotkeyRegistration.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "hotkey/GlobalHotkey.h"
#include "hotkey/QHotkeyHeader.h"
#include "settings/Settings.h"
#include "support/TestProgram.h"

#include <QSettings>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

class NamedPlugin : public IPlugin
{
public:
    NamedPlugin(QString command, QStringList aliases)
        : m_command(std::move(command))
        , m_aliases(std::move(aliases))
    {
    }

    QString command() const override { return m_command; }
    QStringList aliases() const override { return m_aliases; }
    QString description() const override { return {}; }
    QVariantList query(const QString &) override { return {}; }
    bool execute(const QVariantMap &) override { return false; }

private:
    QString m_command;
    QStringList m_aliases;
};

} // namespace

/// HotkeyRegistration: which plugins have a hotkey.
class tst_PluginHotkeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void registersThePluginsWithASequence();
    void countsAliasesOnce();
    void readsTheSequenceOfThePrimaryCommandAlone();
    void leavesOutTheSettingsPlugin();
    void leavesOutTheSettingsPluginUnderAnyName();
    void leavesOutDisabledPluginsAndTakesThemBack();
    void followsAChangedSequence();
    void clearsBeforeItRegisters();
    void leavesTheMainHotkeyAlone();

private:
    void registerHotkeys(const PluginManager &plugins);
    QStringList reload();

    NamedPlugin m_calc{u"calc"_s, {u"="_s, u"calculate"_s}};
    NamedPlugin m_todo{u"todo"_s, {u"task"_s}};
    NamedPlugin m_set{u"set"_s, {u"settings"_s}};
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<PluginManager> m_plugins;
    std::unique_ptr<GlobalHotkey> m_hotkey;
};

void tst_PluginHotkeys::init()
{
    m_hotkey = std::make_unique<GlobalHotkey>();
    QSettings(u"Vaskel"_s, u"Vaskel"_s).clear();
    m_settings = std::make_unique<Settings>();
    m_plugins = std::make_unique<PluginManager>();
    m_plugins->registerPlugin(&m_calc);
    m_plugins->registerPlugin(&m_todo);
    m_plugins->registerPlugin(&m_set);
}

void tst_PluginHotkeys::registerHotkeys(const PluginManager &plugins)
{
    HotkeyRegistration(m_hotkey.get(), &plugins, m_settings.get(), nullptr).registerPluginHotkeys();
}

// The registered hotkeys after a reload, sorted.
QStringList tst_PluginHotkeys::reload()
{
    registerHotkeys(*m_plugins);
    QStringList sequences;
    const auto hotkeys = m_hotkey->findChildren<QHotkey *>();
    for (const QHotkey *hotkey : hotkeys) {
        if (hotkey->isRegistered()) {
            sequences.append(hotkey->shortcut().toString(QKeySequence::PortableText));
        }
    }
    sequences.sort();
    return sequences;
}

void tst_PluginHotkeys::registersThePluginsWithASequence()
{
    QCOMPARE(reload(), QStringList());
    m_settings->setPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s);
    QCOMPARE(reload(), QStringList{u"Ctrl+Alt+C"_s});
    m_settings->setPluginHotkey(u"todo"_s, u"Ctrl+Alt+T"_s);
    QCOMPARE(reload(), (QStringList{u"Ctrl+Alt+C"_s, u"Ctrl+Alt+T"_s}));
}

void tst_PluginHotkeys::countsAliasesOnce()
{
    m_settings->setPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s);
    QCOMPARE(reload(), QStringList{u"Ctrl+Alt+C"_s});
}

void tst_PluginHotkeys::readsTheSequenceOfThePrimaryCommandAlone()
{
    m_settings->setPluginHotkey(u"="_s, u"Ctrl+Alt+E"_s);
    m_settings->setPluginHotkey(u"task"_s, u"Ctrl+Alt+K"_s);
    QCOMPARE(reload(), QStringList());
}

void tst_PluginHotkeys::leavesOutTheSettingsPlugin()
{
    m_settings->setPluginHotkey(u"set"_s, u"Ctrl+Alt+S"_s);
    m_settings->setPluginHotkey(u"settings"_s, u"Ctrl+Alt+S"_s);
    QCOMPARE(reload(), QStringList());
}

void tst_PluginHotkeys::leavesOutTheSettingsPluginUnderAnyName()
{
    NamedPlugin preferences(u"preferences"_s, {u"set"_s});
    PluginManager plugins;
    plugins.registerPlugin(&preferences);
    plugins.registerPlugin(&m_calc);
    m_settings->setPluginHotkey(u"preferences"_s, u"Ctrl+Alt+P"_s);
    m_settings->setPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s);

    registerHotkeys(plugins);
    const auto hotkeys = m_hotkey->findChildren<QHotkey *>();
    QCOMPARE(hotkeys.size(), 2); // including the main one
    QCOMPARE(hotkeys.last()->shortcut(), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_C));
}

void tst_PluginHotkeys::leavesOutDisabledPluginsAndTakesThemBack()
{
    m_settings->setPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s);
    m_settings->setPluginHotkey(u"todo"_s, u"Ctrl+Alt+T"_s);
    QCOMPARE(reload().size(), 2);

    m_settings->setPluginEnabled(u"calc"_s, false);
    QCOMPARE(reload(), QStringList{u"Ctrl+Alt+T"_s});
    m_settings->setPluginEnabled(u"calc"_s, true);
    QCOMPARE(reload(), (QStringList{u"Ctrl+Alt+C"_s, u"Ctrl+Alt+T"_s}));
}

void tst_PluginHotkeys::followsAChangedSequence()
{
    m_settings->setPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s);
    reload();
    m_settings->setPluginHotkey(u"calc"_s, u"Ctrl+Alt+K"_s);
    QCOMPARE(reload(), QStringList{u"Ctrl+Alt+K"_s});
    m_settings->setPluginHotkey(u"calc"_s, {});
    QCOMPARE(reload(), QStringList());
}

void tst_PluginHotkeys::clearsBeforeItRegisters()
{
    m_settings->setPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s);
    QCOMPARE(reload().size(), 1);
    QCOMPARE(reload().size(), 1);
    m_plugins = std::make_unique<PluginManager>();
    QCOMPARE(reload(), QStringList());
}

void tst_PluginHotkeys::leavesTheMainHotkeyAlone()
{
    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+Space"_s));
    QCOMPARE(reload(), QStringList{u"Ctrl+Alt+Space"_s});
}

VASKEL_TEST(tst_PluginHotkeys, QApplication)
#include "tst_PluginHotkeys.moc"
