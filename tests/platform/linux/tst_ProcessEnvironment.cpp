// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessEnvironment.h"

#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_ProcessEnvironment : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unsetsPrivateVariables_data();
    void unsetsPrivateVariables();
    void keepsAllOtherVariables_data();
    void keepsAllOtherVariables();
    void prefersX11WhereItIs_data();
    void prefersX11WhereItIs();
    void needsNoDisplayWithoutAWindowSystem();
};

void tst_ProcessEnvironment::unsetsPrivateVariables_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"DESKTOP_STARTUP_ID",
                             "XDG_ACTIVATION_TOKEN",
                             "DESKTOP_AUTOSTART_ID",
                             "GIO_LAUNCHED_DESKTOP_FILE",
                             "GIO_LAUNCHED_DESKTOP_FILE_PID",
                             "BAMF_DESKTOP_FILE_HINT",
                             "DBUS_STARTER_ADDRESS",
                             "DBUS_STARTER_BUS_TYPE",
                             "INVOCATION_ID",
                             "JOURNAL_STREAM",
                             "MANAGERPID",
                             "MANAGERPIDFDID",
                             "SYSTEMD_EXEC_PID",
                             "NOTIFY_SOCKET",
                             "FDSTORE",
                             "WATCHDOG_PID",
                             "WATCHDOG_USEC",
                             "LISTEN_PID",
                             "LISTEN_PIDFDID",
                             "LISTEN_FDS",
                             "LISTEN_FDNAMES",
                             "MEMORY_PRESSURE_WATCH",
                             "MEMORY_PRESSURE_WRITE",
                             "CREDENTIALS_DIRECTORY"}) {
        QTest::newRow(name) << QByteArray(name);
    }
}

void tst_ProcessEnvironment::unsetsPrivateVariables()
{
    QFETCH(QByteArray, name);
    qputenv(name.constData(), "value");
    platform::unsetPrivateVariables();
    QVERIFY(!qEnvironmentVariableIsSet(name.constData()));
}

void tst_ProcessEnvironment::keepsAllOtherVariables_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "LANG",
                             "LISTEN", "MY_NOTIFY_SOCKET", "invocation_id", "VASKEL"}) {
        QTest::newRow(name) << QByteArray(name);
    }
}

void tst_ProcessEnvironment::keepsAllOtherVariables()
{
    QFETCH(QByteArray, name);
    for (const QByteArray &value : {"value"_ba, "记事本 ä=b"_ba, ""_ba}) {
        qputenv(name.constData(), value);
        platform::unsetPrivateVariables();
        QVERIFY(qEnvironmentVariableIsSet(name.constData()));
        QCOMPARE(qgetenv(name.constData()), value);
    }
    qunsetenv(name.constData());
}

void tst_ProcessEnvironment::prefersX11WhereItIs_data()
{
    QTest::addColumn<QByteArray>("display");
    QTest::addColumn<QByteArray>("chosen");
    QTest::addColumn<QByteArray>("preferred");

    QTest::newRow("X11") << ":0"_ba << QByteArray() << "xcb;wayland"_ba;
    QTest::newRow("no X11") << QByteArray() << QByteArray() << QByteArray();
    QTest::newRow("the user's choice") << ":0"_ba
                                       << "wayland"_ba
                                       << "wayland"_ba;
}

void tst_ProcessEnvironment::prefersX11WhereItIs()
{
    QFETCH(const QByteArray, display);
    QFETCH(const QByteArray, chosen);
    QFETCH(const QByteArray, preferred);

    qputenv("DISPLAY", display);
    qputenv("QT_QPA_PLATFORM", chosen);
    platform::chooseWindowSystem();
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), preferred);
    platform::unsetPrivateVariables();
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), chosen);
}

void tst_ProcessEnvironment::needsNoDisplayWithoutAWindowSystem()
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    const platform::WithoutWindowSystem withoutWindowSystem;
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), "offscreen"_ba);
}

VASKEL_TEST(tst_ProcessEnvironment, QCoreApplication)
#include "tst_ProcessEnvironment.moc"
