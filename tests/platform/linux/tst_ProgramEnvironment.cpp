// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProgramEnvironment.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_ProgramEnvironment : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsPrivateVariablesBack_data();
    void keepsPrivateVariablesBack();
    void passesOnAllOthers_data();
    void passesOnAllOthers();
};

void tst_ProgramEnvironment::keepsPrivateVariablesBack_data()
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

void tst_ProgramEnvironment::keepsPrivateVariablesBack()
{
    QFETCH(QByteArray, name);
    qputenv(name.constData(), "value");
    QVERIFY(!platform::programEnvironment().contains(QString::fromLatin1(name)));
    QCOMPARE(qgetenv(name.constData()), QByteArray("value"));
    qunsetenv(name.constData());
}

void tst_ProgramEnvironment::passesOnAllOthers_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "LANG",
                             "LISTEN", "MY_NOTIFY_SOCKET", "invocation_id", "VASKEL"}) {
        QTest::newRow(name) << QByteArray(name);
    }
}

void tst_ProgramEnvironment::passesOnAllOthers()
{
    QFETCH(QByteArray, name);
    for (const auto &value : {u"value"_s, u"记事本 ä=b"_s, QString()}) {
        qputenv(name.constData(), value.toUtf8());
        const QProcessEnvironment environment = platform::programEnvironment();
        QVERIFY(environment.contains(QString::fromLatin1(name)));
        QCOMPARE(environment.value(QString::fromLatin1(name)), value);
    }
    qunsetenv(name.constData());
}

QTEST_GUILESS_MAIN(tst_ProgramEnvironment)
#include "tst_ProgramEnvironment.moc"
