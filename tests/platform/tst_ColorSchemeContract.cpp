// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ColorScheme.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QList>
#include <QTest>

class tst_ColorSchemeContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void answerStaysWithoutAChange();
    void changeIsReported();
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

void tst_ColorSchemeContract::changeIsReported()
{
    using platform::ColorScheme;
    if (!world::preferColors(ColorScheme::Light)) {
        QSKIP("No program can change what the user prefers here.");
    }
    QTRY_VERIFY(platform::colorScheme() == ColorScheme::Light);

    QList<ColorScheme> answers;
    {
        QObject context;
        platform::watchColorScheme(&context,
                                   [&answers] { answers.append(platform::colorScheme()); });
        world::preferColors(ColorScheme::Dark);
        QTRY_COMPARE(answers, QList<ColorScheme>{ColorScheme::Dark});
        world::preferColors(ColorScheme::Light);
        QTRY_COMPARE(answers, QList<ColorScheme>({ColorScheme::Dark, ColorScheme::Light}));
    }
    world::preferColors(ColorScheme::Dark);
    QTRY_VERIFY(platform::colorScheme() == ColorScheme::Dark);
    QCOMPARE(answers.size(), 2);
}

VASKEL_TEST(tst_ColorSchemeContract, QApplication)
#include "tst_ColorSchemeContract.moc"
