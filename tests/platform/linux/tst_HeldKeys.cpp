// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/HeldKeys.h"

#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::HeldKeys;

class tst_HeldKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTheFirstPressAlone();
    void takesAPressAfterARelease();
    void takesAPressLongAfterTheLast();
    void tellsKeysApart();
    void releasesAll();
};

void tst_HeldKeys::takesTheFirstPressAlone()
{
    HeldKeys keys;
    HeldKeys::Time time;
    QVERIFY(keys.press(u"a"_s, time));
    // The delay, and the repetitions for minutes.
    QVERIFY(!keys.press(u"a"_s, time += 2s));
    for (int repetition = 0; repetition < 5000; ++repetition) {
        QVERIFY(!keys.press(u"a"_s, time += 25ms));
    }
}

void tst_HeldKeys::takesAPressAfterARelease()
{
    HeldKeys keys;
    const HeldKeys::Time time;
    QVERIFY(keys.press(u"a"_s, time));
    keys.release(u"a"_s);
    QVERIFY(keys.press(u"a"_s, time));
    QVERIFY(!keys.press(u"a"_s, time));
}

void tst_HeldKeys::takesAPressLongAfterTheLast()
{
    HeldKeys keys;
    const HeldKeys::Time time;
    QVERIFY(keys.press(u"a"_s, time));
    QVERIFY(keys.press(u"a"_s, time + 10s));
    QVERIFY(!keys.press(u"a"_s, time + 11s));
}

void tst_HeldKeys::tellsKeysApart()
{
    HeldKeys keys;
    const HeldKeys::Time time;
    QVERIFY(keys.press(u"a"_s, time));
    QVERIFY(keys.press(u"b"_s, time));
    keys.release(u"b"_s);
    QVERIFY(!keys.press(u"a"_s, time));
    QVERIFY(keys.press(u"b"_s, time));
}

void tst_HeldKeys::releasesAll()
{
    HeldKeys keys;
    const HeldKeys::Time time;
    keys.press(u"a"_s, time);
    keys.press(u"b"_s, time);
    keys.releaseAll();
    QVERIFY(keys.press(u"a"_s, time));
    QVERIFY(keys.press(u"b"_s, time));
}

VASKEL_TEST(tst_HeldKeys, QCoreApplication)
#include "tst_HeldKeys.moc"
