// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Settings.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "support/TestRegistry.h"

#include <QPoint>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <functional>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

const QString storeKey = uR"(\Software\Vaskel\Vaskel)"_s;

// Read by another program of the system: the value's name, type and data.
QStringList queried(const QString &key, const QString &name)
{
    QProcess reg;
    reg.start(u"reg"_s, {u"query"_s, testhome::registryPath() + storeKey + key, u"/v"_s, name});
    if (!reg.waitForFinished()) {
        return {u"reg does not end"_s};
    }
    const QStringList lines =
        QString::fromLocal8Bit(reg.readAllStandardOutput()).split(u"\r\n"_s, Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        QStringList words = line.simplified().split(u' ');
        if (words.first() == name) {
            return words;
        }
    }
    return {};
}

void writeNumber(const wchar_t *name, DWORD value)
{
    QCOMPARE(RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Vaskel\\Vaskel", name, REG_DWORD,
                             &value, sizeof(value)),
             LSTATUS(ERROR_SUCCESS));
}

QStringList valueNames()
{
    QProcess reg;
    reg.start(u"reg"_s, {u"query"_s, testhome::registryPath() + storeKey, u"/s"_s});
    if (!reg.waitForFinished()) {
        return {u"reg does not end"_s};
    }
    return QString::fromLocal8Bit(reg.readAllStandardOutput())
        .split(u"\r\n"_s, Qt::SkipEmptyParts)
        .filter(u"REG_"_s);
}

} // namespace

using Change = std::function<void(Settings &)>;
Q_DECLARE_METATYPE(Change)

class tst_SettingsInRegistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void storesUnderItsKey_data();
    void storesUnderItsKey();
    void readingCreatesNothing();
    void readsTheOldHotkey_data();
    void readsTheOldHotkey();
    void prefersTheNewHotkey();
    void oldHotkeyIsNeverWritten();
    void settingADefaultWritesNothing();
};

void tst_SettingsInRegistry::storesUnderItsKey_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("value");
    const auto row = [](const char *name, const Change &change, const QStringList &value,
                        const QString &key = {}) {
        QTest::newRow(name) << change << key << value;
    };
    row("globalHotkey", [](Settings &s) { s.setGlobalHotkey(u"Meta+Space"_s); },
        {u"globalHotkey"_s, u"REG_SZ"_s, u"Meta+Space"_s});
    row("searchEngine", [](Settings &s) { s.setSearchEngine(u"Google"_s); },
        {u"searchEngine"_s, u"REG_SZ"_s, u"Google"_s});
    row("pluginAutoEnter", [](Settings &s) { s.setPluginAutoEnter(true); },
        {u"pluginAutoEnter"_s, u"REG_SZ"_s, u"true"_s});
    row("autoStart", [](Settings &s) { s.setAutoStart(true); },
        {u"autoStart"_s, u"REG_SZ"_s, u"true"_s});
    row("theme", [](Settings &s) { s.setTheme(u"dark"_s); }, {u"theme"_s, u"REG_SZ"_s, u"dark"_s});
    row("showFloatIcon", [](Settings &s) { s.setShowFloatIcon(false); },
        {u"showFloatIcon"_s, u"REG_SZ"_s, u"false"_s});
    row("autoHideOnFocusLoss", [](Settings &s) { s.setAutoHideOnFocusLoss(true); },
        {u"autoHideOnFocusLoss"_s, u"REG_SZ"_s, u"true"_s});
    row("appLaunchRequiresDoubleClick",
        [](Settings &s) { s.setAppLaunchRequiresDoubleClick(false); },
        {u"appLaunchRequiresDoubleClick"_s, u"REG_SZ"_s, u"false"_s});
    row("showAllAppsWhenSearchEmpty", [](Settings &s) { s.setShowAllAppsWhenSearchEmpty(false); },
        {u"showAllAppsWhenSearchEmpty"_s, u"REG_SZ"_s, u"false"_s});
    row(
        "plugin", [](Settings &s) { s.setPluginEnabled(u"calc"_s, false); },
        {u"calc"_s, u"REG_SZ"_s, u"false"_s}, uR"(\plugins)"_s);
    row(
        "plugin hotkey", [](Settings &s) { s.setPluginHotkey(u"calc"_s, u"Ctrl+F2"_s); },
        {u"calc"_s, u"REG_SZ"_s, u"Ctrl+F2"_s}, uR"(\pluginHotkeys)"_s);
    row("floatIconX",
        [](Settings &s) {
            s.setFloatIconPos({300, -7});
        },
        {u"floatIconX"_s, u"REG_DWORD"_s, u"0x12c"_s});
    row("floatIconY",
        [](Settings &s) {
            s.setFloatIconPos({300, -7});
        },
        {u"floatIconY"_s, u"REG_DWORD"_s, u"0xfffffff9"_s});
    row("windowPosition",
        [](Settings &s) {
            s.setWindowPosition({300, -7});
        },
        {u"windowPosition"_s, u"REG_SZ"_s, u"@Point(300"_s, u"-7)"_s});
}

void tst_SettingsInRegistry::storesUnderItsKey()
{
    QFETCH(Change, change);
    QFETCH(QString, key);
    QFETCH(QStringList, value);
    {
        Settings settings;
        change(settings);
    }
    QCOMPARE(queried(key, value.first()), value);
}

void tst_SettingsInRegistry::readingCreatesNothing()
{
    {
        const Settings settings;
        QCOMPARE(settings.globalHotkey(), u"Ctrl+Alt+Space"_s);
        QCOMPARE(settings.searchEngine(), u"Bing"_s);
        QCOMPARE(settings.theme(), u"system"_s);
        QCOMPARE(settings.floatIconPos(), QPoint(-1, -1));
        QVERIFY(settings.isPluginEnabled(u"any"_s));
        QCOMPARE(settings.pluginHotkey(u"any"_s), QString());
    }
    QCOMPARE(valueNames(), QStringList());
}

void tst_SettingsInRegistry::readsTheOldHotkey_data()
{
    QTest::addColumn<uint>("modifiers");
    QTest::addColumn<uint>("key");
    QTest::addColumn<QString>("expected");
    QTest::newRow("function key") << 0x4000000U << 0x71U << u"Ctrl+F2"_s;
    QTest::newRow("first function key") << 0x8000000U << 0x70U << u"Alt+F1"_s;
    QTest::newRow("last function key") << 0x4000000U << 0x7bU << u"Ctrl+F12"_s;
    QTest::newRow("beyond the function keys") << 0x4000000U << 0x7cU << u"Ctrl+|"_s;
    QTest::newRow("letter") << 0xc000000U << 0x41U << u"Ctrl+Alt+A"_s;
}

void tst_SettingsInRegistry::readsTheOldHotkey()
{
    QFETCH(uint, modifiers);
    QFETCH(uint, key);
    writeNumber(L"hotkeyModifiers", modifiers);
    writeNumber(L"hotkeyKey", key);
    QTEST(Settings().globalHotkey(), "expected");
}

void tst_SettingsInRegistry::prefersTheNewHotkey()
{
    writeNumber(L"hotkeyModifiers", 0x4000000);
    writeNumber(L"hotkeyKey", 0x71);
    Settings().setGlobalHotkey(u"Alt+F3"_s);
    QCOMPARE(Settings().globalHotkey(), u"Alt+F3"_s);
    QCOMPARE(queried({}, u"hotkeyKey"_s), (QStringList{u"hotkeyKey"_s, u"REG_DWORD"_s, u"0x71"_s}));
}

void tst_SettingsInRegistry::oldHotkeyIsNeverWritten()
{
    writeNumber(L"hotkeyModifiers", 0x4000000);
    writeNumber(L"hotkeyKey", 0x71);
    Settings().setGlobalHotkey(u"Ctrl+F2"_s);
    QCOMPARE(valueNames().size(), 2);
}

void tst_SettingsInRegistry::settingADefaultWritesNothing()
{
    Settings settings;
    const QSignalSpy changed(&settings, &Settings::showFloatIconChanged);
    settings.setShowFloatIcon(true);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(valueNames(), QStringList());
}

VASKEL_TEST(tst_SettingsInRegistry, QCoreApplication)
#include "tst_SettingsInRegistry.moc"
