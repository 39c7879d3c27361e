// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessEnvironment.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QProcessEnvironment>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_ProcessEnvironmentContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void unsetsPrivateVariables();
    void keepsAllOtherVariables();
    void leavesTheUsersWindowSystem();
    void restoresTheWindowSystem_data();
    void restoresTheWindowSystem();
};

void tst_ProcessEnvironmentContract::init()
{
    world::reset();
    qunsetenv("QT_QPA_PLATFORM");
}

void tst_ProcessEnvironmentContract::unsetsPrivateVariables()
{
    platform::unsetPrivateVariables();
    QVERIFY(!QProcessEnvironment::systemEnvironment().contains(world::privateVariable()));
}

void tst_ProcessEnvironmentContract::keepsAllOtherVariables()
{
    QProcessEnvironment before = QProcessEnvironment::systemEnvironment();
    before.remove(world::privateVariable());
    platform::chooseWindowSystem();
    platform::unsetPrivateVariables();
    QCOMPARE(QProcessEnvironment::systemEnvironment().toStringList(), before.toStringList());
}

void tst_ProcessEnvironmentContract::leavesTheUsersWindowSystem()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::chooseWindowSystem();
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("offscreen"));
    platform::unsetPrivateVariables();
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("offscreen"));
}

void tst_ProcessEnvironmentContract::restoresTheWindowSystem_data()
{
    QTest::addColumn<QByteArray>("windowSystem");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("chosen by the user") << QByteArray("xcb");
}

void tst_ProcessEnvironmentContract::restoresTheWindowSystem()
{
    QFETCH(const QByteArray, windowSystem);
    if (!windowSystem.isNull()) {
        qputenv("QT_QPA_PLATFORM", windowSystem);
    }
    {
        const platform::WithoutWindowSystem withoutWindowSystem;
    }
    QCOMPARE(qEnvironmentVariableIsSet("QT_QPA_PLATFORM"), !windowSystem.isNull());
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), windowSystem);
}

VASKEL_TEST(tst_ProcessEnvironmentContract, QCoreApplication)
#include "tst_ProcessEnvironmentContract.moc"
