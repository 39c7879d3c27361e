// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UpdateScript.h"

#include "platform/World.h"
#include "support/TestHome.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_UpdateScriptContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void installsTheDownload();
    void doesNothingUntilItIsStarted();
    void startsNothingThatIsMissing();
};

void tst_UpdateScriptContract::installsTheDownload()
{
    const QString download = testhome::writeFile(u"tmp/download"_s, world::newProgram());
    const QString program = testhome::writeFile(u"bin/program"_s, "old program");
    QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    const QString text = platform::updateScript(download, program);
    QVERIFY(!text.isEmpty());
    const QString script = testhome::writeFile(u"tmp/script"_s, text.toUtf8());
    platform::startUpdateScript(script);
    QTRY_VERIFY(world::isUpdated(download, program));
}

void tst_UpdateScriptContract::doesNothingUntilItIsStarted()
{
    const QString download = testhome::writeFile(u"tmp/download"_s, world::newProgram());
    const QString program = testhome::writeFile(u"bin/program"_s, "old program");
    platform::updateScript(download, program);
    QVERIFY(!world::isUpdated(download, program));
    QVERIFY(QFile::exists(download));
}

void tst_UpdateScriptContract::startsNothingThatIsMissing()
{
    platform::startUpdateScript(testhome::path() + "/tmp/missing"_L1);
    QVERIFY(!world::isUpdated(testhome::path() + "/tmp/download"_L1,
                              testhome::path() + "/bin/program"_L1));
}

QTEST_GUILESS_MAIN(tst_UpdateScriptContract)
#include "tst_UpdateScriptContract.moc"
