// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/PluginManager.h"

#include "core/IPlugin.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_PluginManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unknownWordYieldsNothing();
};

void tst_PluginManager::unknownWordYieldsNothing()
{
    PluginManager manager;
    QVERIFY(manager.queryCommand(u"calc"_s, QString()).isEmpty());
    QVERIFY(!manager.pluginForCommand(u"calc"_s));
}

QTEST_MAIN(tst_PluginManager)
#include "tst_PluginManager.moc"
