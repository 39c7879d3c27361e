// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestProgram.h"

#include <QHotkey>

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// Runs on the offscreen platform, which has no global hotkeys.
class tst_QHotkeyWithoutSystem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void supportsNothing();
    void registersNothing();
};

void tst_QHotkeyWithoutSystem::supportsNothing()
{
    QVERIFY(!QHotkey::isPlatformSupported());
}

void tst_QHotkeyWithoutSystem::registersNothing()
{
    const QKeySequence sequence(Qt::CTRL | Qt::ALT | Qt::Key_Space);
    QHotkey hotkey;
    QSignalSpy changed(&hotkey, &QHotkey::registeredChanged);

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"no global hotkeys"_s));
    QVERIFY(!hotkey.setShortcut(sequence, true));
    QVERIFY(!hotkey.isRegistered());
    QVERIFY(hotkey.setRegistered(false));
    QCOMPARE(changed.count(), 0);

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"no global hotkeys"_s));
    QVERIFY(!QHotkey(sequence, true).isRegistered());
}

VASKEL_TEST(tst_QHotkeyWithoutSystem, QApplication)
#include "tst_QHotkeyWithoutSystem.moc"
