// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/GlobalHotkey.h"

#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Runs on the offscreen platform, which has no global hotkeys.
class tst_GlobalHotkeyWithoutSystem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void registersNoMainHotkey();
    void registersNoPluginHotkey();
};

void tst_GlobalHotkeyWithoutSystem::init()
{
    QTest::ignoreMessage(QtWarningMsg, "This platform has no global hotkeys");
}

void tst_GlobalHotkeyWithoutSystem::registersNoMainHotkey()
{
    GlobalHotkey hotkey;
    QVERIFY(!hotkey.setMainHotkey(u"Ctrl+Alt+Space"_s));
    QVERIFY(!hotkey.isMainHotkeyRegistered());
    QVERIFY2(!hotkey.isMainHotkeyHeld(), "no other program has it");
    QVERIFY(!hotkey.setMainHotkey(QString()));
}

void tst_GlobalHotkeyWithoutSystem::registersNoPluginHotkey()
{
    GlobalHotkey hotkey;
    QVERIFY(!hotkey.registerPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s));
    QVERIFY2(!hotkey.isPluginHotkeyHeld(u"calc"_s), "no other program has it");
    hotkey.clearPluginHotkeys();
}

VASKEL_TEST(tst_GlobalHotkeyWithoutSystem, QApplication)
#include "tst_GlobalHotkeyWithoutSystem.moc"
