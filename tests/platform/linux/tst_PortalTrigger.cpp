// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/PortalTrigger.h"

#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QKeySequence>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_PortalTrigger : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesTheKeys_data();
    void namesTheKeys();
};

void tst_PortalTrigger::namesTheKeys_data()
{
    QTest::addColumn<QString>("sequence");
    QTest::addColumn<QString>("trigger");

    const auto add = [](const char *sequence, const char *trigger) {
        QTest::addRow("%s: %s", sequence, trigger)
            << QString::fromUtf8(sequence) << QString::fromUtf8(trigger);
    };
    add("", "");
    add("Ctrl+Alt+Space", "CTRL+ALT+space");
    add("Meta+Shift+Alt+Ctrl+K", "CTRL+ALT+SHIFT+LOGO+k");
    add("F9", "F9");
    add("Shift+F24", "SHIFT+F24");
    add("Ctrl+1", "CTRL+1");
    add("Ctrl+;", "CTRL+semicolon");
    add("Ctrl++", "CTRL+plus");
    add("Ctrl+,", "CTRL+comma");
    add("Alt+`", "ALT+grave");
    add("Ctrl+Ä", "CTRL+adiaeresis");
    add("Ctrl+Ж", "CTRL+Cyrillic_zhe");
    add("Ctrl+Alt+Left", "CTRL+ALT+Left");
    add("Meta+PgDown", "LOGO+Page_Down");
    add("Alt+Return", "ALT+Return");
    add("Num+Enter", "KP_Enter");
    add("Ctrl+Num+5", "CTRL+KP_5");
    add("Ctrl+Num++", "CTRL+KP_Add");
    add("Ctrl+Num+*", "CTRL+KP_Multiply");
    add("Pause", "Pause");
    add("Print", "Print");
    add("Volume Up", "XF86AudioRaiseVolume");
    add("Ctrl+K, Ctrl+C", "CTRL+k");
    add("Ctrl+Hangul", ""); // no name in the table
    add("Ctrl+Nonsense", "");
}

void tst_PortalTrigger::namesTheKeys()
{
    QFETCH(const QString, sequence);
    const QKeySequence keys(sequence, QKeySequence::PortableText);
    QTEST(platform::portalTrigger(keys), "trigger");
}

VASKEL_TEST(tst_PortalTrigger, QCoreApplication)
#include "tst_PortalTrigger.moc"
