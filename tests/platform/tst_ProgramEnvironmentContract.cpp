// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProgramEnvironment.h"

#include "platform/World.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_ProgramEnvironmentContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void passesOnTheEnvironment();
    void keepsPrivateVariablesBack();
};

void tst_ProgramEnvironmentContract::passesOnTheEnvironment()
{
    const QProcessEnvironment environment = platform::programEnvironment();
    QCOMPARE(environment.value(u"PATH"_s), qEnvironmentVariable("PATH"));
    QCOMPARE(environment.value(u"HOME"_s), qEnvironmentVariable("HOME"));
}

void tst_ProgramEnvironmentContract::keepsPrivateVariablesBack()
{
    QVERIFY(!platform::programEnvironment().contains(world::privateVariable()));
}

QTEST_GUILESS_MAIN(tst_ProgramEnvironmentContract)
#include "tst_ProgramEnvironmentContract.moc"
