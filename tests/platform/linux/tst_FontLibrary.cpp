// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray report()
{
    QFile file(testhome::path() + "/report"_L1);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void watch(QProcess &process, const QString &program, const QStringList &arguments = {})
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LD_PRELOAD"_s, QStringLiteral(ENVIRONMENT_WATCH));
    environment.insert(u"ENVIRONMENT_REPORT"_s, testhome::path() + "/report"_L1);
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s);
    // The program unsets these for its children, and Qt some more.
    environment.insert(u"DESKTOP_STARTUP_ID"_s, u"started_TIME0"_s);
    environment.insert(u"INVOCATION_ID"_s, u"1"_s);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
}

} // namespace

/// Whether anything changes the environment while another thread reads it, which is a data race.
class tst_FontLibrary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void watchCountsEachChange();
    void programChangesNothing();
};

void tst_FontLibrary::watchCountsEachChange()
{
    QProcess process;
    watch(process, QStringLiteral(FONT_STARTER), {u"FIRST"_s, u"SECOND"_s});
    QVERIFY(process.waitForFinished());
    QCOMPARE(report(), QByteArray("2\n"));
    watch(process, QStringLiteral(FONT_STARTER));
    QVERIFY(process.waitForFinished());
    QCOMPARE(report(), QByteArray("0\n"));
}

void tst_FontLibrary::programChangesNothing()
{
    QProcess program;
    watch(program, QStringLiteral(VASKEL_PROGRAM));
    QVERIFY(program.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(!report().isEmpty() || program.state() == QProcess::NotRunning, 30000);
    program.kill();
    program.waitForFinished();
    QCOMPARE(report(), QByteArray("0\n"));
}

VASKEL_TEST(tst_FontLibrary, QCoreApplication)
#include "tst_FontLibrary.moc"
