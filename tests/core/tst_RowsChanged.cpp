// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/RowsChanged.h"

#include "core/PluginManager.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList commandsOf(const QSignalSpy &changed)
{
    QStringList commands;
    for (const QList<QVariant> &arguments : changed) {
        commands.append(arguments.first().toString());
    }
    return commands;
}

} // namespace

class tst_RowsChanged : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emitsInTheNextPassOfTheEventLoop();
    void emitsOnceForManyReports();
    void emitsForEachCommand();
    void emitsAgainForAReportDuringTheSignal();
    void belongsToThePluginManager();
};

void tst_RowsChanged::emitsInTheNextPassOfTheEventLoop()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    rowsChanged.report(u"file"_s);
    QCOMPARE(changed.count(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(commandsOf(changed), QStringList(u"file"_s));
}

void tst_RowsChanged::emitsOnceForManyReports()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    for (int report = 0; report < 100; ++report) {
        rowsChanged.report(u"file"_s);
    }
    QCoreApplication::processEvents();
    QCOMPARE(commandsOf(changed), QStringList(u"file"_s));
}

void tst_RowsChanged::emitsForEachCommand()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    rowsChanged.report(u"file"_s);
    rowsChanged.report(u"calc"_s);
    rowsChanged.report(u"file"_s);
    QCoreApplication::processEvents();
    QCOMPARE(commandsOf(changed), QStringList({u"file"_s, u"calc"_s}));
}

void tst_RowsChanged::emitsAgainForAReportDuringTheSignal()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    connect(&rowsChanged, &RowsChanged::changed, &rowsChanged, [&] {
        if (changed.count() == 1) {
            rowsChanged.report(u"file"_s);
        }
    });
    rowsChanged.report(u"file"_s);
    QTRY_COMPARE(commandsOf(changed), QStringList({u"file"_s, u"file"_s}));
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 2);
}

void tst_RowsChanged::belongsToThePluginManager()
{
    const PluginManager plugins;
    QVERIFY(plugins.rowsChanged());
    QCOMPARE(plugins.rowsChanged(), plugins.rowsChanged());
    const PluginManager others;
    QVERIFY(plugins.rowsChanged() != others.rowsChanged());
}

VASKEL_TEST(tst_RowsChanged, QCoreApplication)
#include "tst_RowsChanged.moc"
