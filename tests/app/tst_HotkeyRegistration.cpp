// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HotkeyRegistration.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "hotkey/GlobalHotkey.h"
#include "hotkey/QHotkeyHeader.h"
#include "settings/Settings.h"
#include "support/FakeDesktopHotkeys.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using Holder = HotkeyOrigin::Holder;
using Hotkeys = QList<platform::DesktopHotkeys::Hotkey>;

namespace {

class Calculator : public IPlugin
{
public:
    QString command() const override { return u"calc"_s; }
    QString description() const override { return {}; }
    QVariantList query(const QString &) override { return {}; }
    bool execute(const QVariantMap &) override { return false; }
};

const QString mainSequence = u"Ctrl+Alt+Space"_s;
const QString calcSequence = u"Ctrl+Alt+C"_s;

} // namespace

class tst_HotkeyRegistration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void grabsTheKeysWithoutADesktop();
    void grabsTheKeysUntilTheDesktopHoldsThem();
    void grabsNoKeyThatTheDesktopHolds();
    void grabsTheKeysAgainWhenTheDesktopEnds();
    void asksTheDesktopOnceForAllChanges();
    void asksForTheHotkeysThatThereAre();
    void passesOnWhatTheDesktopReports();
    void tellsTheOriginWithoutADesktop();
    void tellsTheOriginWithADesktop();

private:
    void make(bool hasDesktop);
    FakeDesktopHotkeys &desktop() { return *fakePlatform().desktopHotkeys; }
    QStringList grabbed() const;

    Calculator m_calculator;
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<PluginManager> m_plugins;
    std::unique_ptr<GlobalHotkey> m_hotkey;
    std::unique_ptr<platform::DesktopHotkeys> m_desktop;
    std::unique_ptr<HotkeyRegistration> m_registration;
};

void tst_HotkeyRegistration::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
    QSettings(u"Vaskel"_s, u"Vaskel"_s).clear();
    m_settings = std::make_unique<Settings>();
    m_settings->setPluginHotkey(u"calc"_s, calcSequence);
    m_plugins = std::make_unique<PluginManager>();
    m_plugins->registerPlugin(&m_calculator);
    m_hotkey = std::make_unique<GlobalHotkey>();
}

void tst_HotkeyRegistration::cleanup()
{
    m_registration.reset();
    m_desktop.reset();
    m_hotkey.reset();
}

void tst_HotkeyRegistration::make(bool hasDesktop)
{
    fakePlatform().hasDesktopHotkeys = hasDesktop;
    m_desktop = platform::createDesktopHotkeys(nullptr);
    m_registration = std::make_unique<HotkeyRegistration>(m_hotkey.get(), m_plugins.get(),
                                                          m_settings.get(), m_desktop.get());
    m_registration->registerMainHotkey();
    m_registration->registerPluginHotkeys();
}

QStringList tst_HotkeyRegistration::grabbed() const
{
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

void tst_HotkeyRegistration::grabsTheKeysWithoutADesktop()
{
    make(false);
    QCOMPARE(grabbed(), QStringList({calcSequence, mainSequence}));
    m_settings->setGlobalHotkey(u"Ctrl+Alt+K"_s);
    m_registration->registerMainHotkey();
    QCOMPARE(grabbed(), QStringList({calcSequence, u"Ctrl+Alt+K"_s}));
    QCoreApplication::processEvents();
    QVERIFY(!fakePlatform().desktopHotkeys);
}

void tst_HotkeyRegistration::grabsTheKeysUntilTheDesktopHoldsThem()
{
    make(true);
    QTRY_COMPARE(desktop().bindCalls.size(), 1);
    QCOMPARE(grabbed(), QStringList({calcSequence, mainSequence}));
    desktop().setBound(true);
    QCOMPARE(grabbed(), QStringList());
}

void tst_HotkeyRegistration::grabsNoKeyThatTheDesktopHolds()
{
    make(true);
    desktop().setBound(true);
    m_settings->setGlobalHotkey(u"Ctrl+Alt+K"_s);
    m_registration->registerMainHotkey();
    m_registration->registerPluginHotkeys();
    QCOMPARE(grabbed(), QStringList());
}

void tst_HotkeyRegistration::grabsTheKeysAgainWhenTheDesktopEnds()
{
    make(true);
    desktop().setBound(true);
    desktop().setBound(false);
    QCOMPARE(grabbed(), QStringList({calcSequence, mainSequence}));
    desktop().setBound(true);
    QCOMPARE(grabbed(), QStringList());
}

void tst_HotkeyRegistration::asksTheDesktopOnceForAllChanges()
{
    make(true);
    QTRY_COMPARE(desktop().bindCalls.size(), 1);
    QCOMPARE(desktop().bindCalls.first(),
             Hotkeys({{{}, mainSequence, u"Show or hide the window"_s},
                      {u"calc"_s, calcSequence, u"Show the command calc"_s}}));
    m_settings->setGlobalHotkey(u"Ctrl+Alt+K"_s);
    m_registration->registerMainHotkey();
    m_settings->setPluginHotkey(u"calc"_s, u"Ctrl+Alt+L"_s);
    m_registration->registerPluginHotkeys();
    QCOMPARE(desktop().bindCalls.size(), 1);
    QTRY_COMPARE(desktop().bindCalls.size(), 2);
    QCOMPARE(desktop().bindCalls.last().first().sequence, u"Ctrl+Alt+K"_s);
    QCOMPARE(desktop().bindCalls.last().last().sequence, u"Ctrl+Alt+L"_s);
}

void tst_HotkeyRegistration::asksForTheHotkeysThatThereAre()
{
    m_settings->setGlobalHotkey(QString());
    make(true);
    QTRY_COMPARE(desktop().bindCalls.size(), 1);
    QCOMPARE(desktop().bindCalls.last().size(), 1);
    QCOMPARE(desktop().bindCalls.last().first().command, u"calc"_s);

    m_settings->setPluginEnabled(u"calc"_s, false);
    m_registration->registerPluginHotkeys();
    QTRY_COMPARE(desktop().bindCalls.size(), 2);
    QVERIFY(desktop().bindCalls.last().isEmpty());
}

void tst_HotkeyRegistration::passesOnWhatTheDesktopReports()
{
    make(true);
    const QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    const QSignalSpy commandActivated(m_hotkey.get(), &GlobalHotkey::commandActivated);
    Q_EMIT desktop().activated();
    QCOMPARE(activated.size(), 1);
    QVERIFY(commandActivated.isEmpty());
    Q_EMIT desktop().commandActivated(u"calc"_s);
    QCOMPARE(activated.size(), 1);
    QCOMPARE(commandActivated.size(), 1);
    QCOMPARE(commandActivated.first(), QVariantList{u"calc"_s});
}

void tst_HotkeyRegistration::tellsTheOriginWithoutADesktop()
{
    make(false);
    QCOMPARE(m_registration->origin({}).holder, Holder::Program);
    QCOMPARE(m_registration->origin(u"calc"_s).holder, Holder::Untold);
    m_settings->setGlobalHotkey(u"Ctrl+Nonsense"_s);
    m_registration->registerMainHotkey();
    QCOMPARE(m_registration->origin({}).holder, Holder::Untold);
}

void tst_HotkeyRegistration::tellsTheOriginWithADesktop()
{
    make(true);
    QCOMPARE(m_registration->origin({}).holder, Holder::Nobody);
    QCOMPARE(m_registration->origin(u"calc"_s).holder, Holder::Untold);

    desktop().triggers = {{QString(), u"Meta+Leertaste"_s}, {u"calc"_s, QString()}};
    desktop().setBound(true);
    const HotkeyOrigin ofWindow = m_registration->origin({});
    QCOMPARE(ofWindow.holder, Holder::Desktop);
    QCOMPARE(ofWindow.trigger, u"Meta+Leertaste"_s);
    QVERIFY(!ofWindow.configure);
    QCOMPARE(m_registration->origin(u"calc"_s).holder, Holder::Desktop);
    QCOMPARE(m_registration->origin(u"calc"_s).trigger, QString());

    desktop().hasDialog = true;
    m_registration->origin({}).configure();
    QCOMPARE(desktop().configureCalls, 1);
    QVERIFY(!m_registration->origin(u"calc"_s).configure);
}

VASKEL_TEST(tst_HotkeyRegistration, QApplication)
#include "tst_HotkeyRegistration.moc"
