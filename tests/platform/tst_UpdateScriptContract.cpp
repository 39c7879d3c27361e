// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UpdateScript.h"

#include "platform/World.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The updater's own file names; some systems depend on the suffix.
QString downloadPath()
{
    return testhome::path() + "/tmp/download.exe"_L1;
}

QString programPath()
{
    return testhome::path() + "/bin/program.exe"_L1;
}

QString scriptPath()
{
    return testhome::path() + "/tmp/script.bat"_L1;
}

void writeFiles()
{
    testhome::writeFile(u"tmp/download.exe"_s, world::newProgram());
    testhome::writeFile(u"bin/program.exe"_s, "old program");
    QVERIFY(QFile::setPermissions(programPath(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

} // namespace

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
    writeFiles();
    QFile script(scriptPath());
    QVERIFY(script.open(QIODevice::WriteOnly | QIODevice::Text));
    script.write(platform::updateScript(downloadPath(), programPath()).toUtf8());
    script.close();
    QVERIFY(script.size() > 0);
    platform::startUpdateScript(scriptPath());
    QTRY_VERIFY_WITH_TIMEOUT(world::isUpdated(downloadPath(), programPath()), 20000);
}

void tst_UpdateScriptContract::doesNothingUntilItIsStarted()
{
    writeFiles();
    platform::updateScript(downloadPath(), programPath());
    QVERIFY(!world::isUpdated(downloadPath(), programPath()));
    QVERIFY(QFile::exists(downloadPath()));
}

void tst_UpdateScriptContract::startsNothingThatIsMissing()
{
    platform::startUpdateScript(scriptPath());
    QVERIFY(!world::isUpdated(downloadPath(), programPath()));
}

VASKEL_TEST(tst_UpdateScriptContract, QCoreApplication)
#include "tst_UpdateScriptContract.moc"
