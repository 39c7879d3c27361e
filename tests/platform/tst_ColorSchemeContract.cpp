// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ColorScheme.h"

#include "platform/World.h"

#include <QTest>

class tst_ColorSchemeContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void answerStaysWithoutAChange();
};

void tst_ColorSchemeContract::answerStaysWithoutAChange()
{
    QObject context;
    int changes = 0;
    platform::watchColorScheme(&context, [&changes] { ++changes; });
    const platform::ColorScheme before = platform::colorScheme();
    QCoreApplication::processEvents();
    QVERIFY(platform::colorScheme() == before);
    QCOMPARE(changes, 0);
}

QTEST_MAIN(tst_ColorSchemeContract)
#include "tst_ColorSchemeContract.moc"
