// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QString folderPath()
{
    return testhome::path() + "/tmp/a/b/folder"_L1;
}

int modeOf(const QString &path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? int(status.st_mode & 07777)
                                                                      : -1;
}

/// A folder of another user, even if root runs the test.
QString foreignFolder()
{
    constexpr uid_t nobody = 65534;
    if (::geteuid() != 0) {
        return u"/"_s;
    }
    QDir().mkpath(folderPath());
    const QByteArray name = QFile::encodeName(folderPath());
    return ::chown(name.constData(), nobody, nobody) == 0 ? folderPath() : QString();
}

} // namespace

class tst_PrivateFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }

    void makesTheFolderForTheUserAlone();
    void restrictsAnExistingFolder();
    void refusesAFolderOfAnotherUser();
    void refusesWhatIsNoFolder_data();
    void refusesWhatIsNoFolder();
    void failsIfTheFolderCannotBeCreated();
    void protectionDependsOnEachParent_data();
    void protectionDependsOnEachParent();
    void protectionDependsOnSymbolicLinks_data();
    void protectionDependsOnSymbolicLinks();
    void protectionDependsOnEachLinkOfAChain_data();
    void protectionDependsOnEachLinkOfAChain();
    void protectionDependsOnTheOwnerOfALink();
    void missingFolderIsNotProtected();
};

void tst_PrivateFolder::makesTheFolderForTheUserAlone()
{
    QVERIFY(platform::makePrivateFolder(folderPath()));
    QCOMPARE(modeOf(folderPath()), 0700);
    QVERIFY(platform::makePrivateFolder(folderPath()));
}

void tst_PrivateFolder::restrictsAnExistingFolder()
{
    const QString file = testhome::writeFile(u"tmp/a/b/folder/file"_s, "content");
    QCOMPARE(::chmod(QFile::encodeName(folderPath()).constData(), 0777), 0);

    QVERIFY(platform::makePrivateFolder(folderPath()));
    QCOMPARE(modeOf(folderPath()), 0700);
    QVERIFY(QFile::exists(file));
}

void tst_PrivateFolder::refusesAFolderOfAnotherUser()
{
    const QString folder = foreignFolder();
    QVERIFY(!folder.isEmpty());
    const int mode = modeOf(folder);

    QVERIFY(!platform::makePrivateFolder(folder));
    QCOMPARE(modeOf(folder), mode);
}

void tst_PrivateFolder::refusesWhatIsNoFolder_data()
{
    QTest::addColumn<QString>("linkTarget");

    QTest::newRow("file") << QString();
    QTest::newRow("symbolic link to a folder of the user's own") << u"own"_s;
    QTest::newRow("symbolic link to nothing") << u"nowhere"_s;
    QTest::newRow("symbolic link to itself") << u"folder"_s;
}

void tst_PrivateFolder::refusesWhatIsNoFolder()
{
    QFETCH(QString, linkTarget);
    const QString own = testhome::path() + "/tmp/a/b/own"_L1;
    QVERIFY(QDir().mkpath(own));
    const int mode = modeOf(own);
    if (linkTarget.isEmpty()) {
        testhome::writeFile(u"tmp/a/b/folder"_s, "content");
    } else {
        QVERIFY(QFile::link(linkTarget, folderPath()));
    }

    QVERIFY(!platform::makePrivateFolder(folderPath()));
    QCOMPARE(modeOf(own), mode);
    QVERIFY(!QFile::exists(testhome::path() + "/tmp/a/b/nowhere"_L1));
}

void tst_PrivateFolder::failsIfTheFolderCannotBeCreated()
{
    testhome::writeFile(u"tmp/a"_s, "a file in the way of the parents");
    QVERIFY(!platform::makePrivateFolder(folderPath()));
}

void tst_PrivateFolder::protectionDependsOnEachParent_data()
{
    QTest::addColumn<QString>("changed");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("isProtected");
    QTest::newRow("none") << u"tmp"_s << 0700 << true;
    QTest::newRow("the folder, shared") << u"tmp/a/b/folder"_s << 0777 << false;
    QTest::newRow("the folder, shared and sticky") << u"tmp/a/b/folder"_s << 01777 << true;
    QTest::newRow("its parent, shared") << u"tmp/a/b"_s << 0777 << false;
    QTest::newRow("its parent, shared and sticky") << u"tmp/a/b"_s << 01777 << true;
    QTest::newRow("a farther one, shared") << u"tmp"_s << 0777 << false;
    QTest::newRow("a farther one, shared and sticky") << u"tmp"_s << 01777 << true;
}

void tst_PrivateFolder::protectionDependsOnEachParent()
{
    QFETCH(QString, changed);
    QFETCH(int, mode);
    QVERIFY(platform::makePrivateFolder(folderPath()));
    const QByteArray name = QFile::encodeName(testhome::path() + u'/' + changed);
    QCOMPARE(::chmod(name.constData(), mode_t(mode)), 0);
    QTEST(platform::isProtectedFolder(folderPath()), "isProtected");
}

void tst_PrivateFolder::protectionDependsOnSymbolicLinks_data()
{
    QTest::addColumn<int>("modeAtLink");
    QTest::addColumn<int>("modeAtTarget");
    QTest::addColumn<bool>("isProtected");
    QTest::newRow("private") << 0700 << 0700 << true;
    QTest::newRow("others can replace the link") << 0777 << 0700 << false;
    QTest::newRow("others can replace the target") << 0700 << 0777 << false;
}

void tst_PrivateFolder::protectionDependsOnSymbolicLinks()
{
    QFETCH(int, modeAtLink);
    QFETCH(int, modeAtTarget);
    QVERIFY(platform::makePrivateFolder(folderPath()));
    const QString links = testhome::path() + "/links"_L1;
    QVERIFY(QDir().mkdir(links));
    QVERIFY(QFile::link(folderPath(), links + "/link"_L1));
    const QByteArray parent = QFile::encodeName(testhome::path() + "/tmp/a/b"_L1);
    QCOMPARE(::chmod(QFile::encodeName(links).constData(), mode_t(modeAtLink)), 0);
    QCOMPARE(::chmod(parent.constData(), mode_t(modeAtTarget)), 0);
    QTEST(platform::isProtectedFolder(links + "/link"_L1), "isProtected");
}

void tst_PrivateFolder::protectionDependsOnEachLinkOfAChain_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("isProtected");
    QTest::newRow("private") << u"../middle/link"_s << 0700 << true;
    QTest::newRow("others can replace the second link") << u"../middle/link"_s << 0777 << false;
    QTest::newRow("sticky") << u"../middle/link"_s << 01777 << true;
    QTest::newRow("absolute") << testhome::path() + "/middle/./link/"_L1 << 0777 << false;
    QTest::newRow("endless") << u"link"_s << 0700 << false;
}

// The folder "middle" is neither in the path nor in that of the folder to which the links lead.
void tst_PrivateFolder::protectionDependsOnEachLinkOfAChain()
{
    QFETCH(QString, target);
    QFETCH(int, mode);
    QVERIFY(platform::makePrivateFolder(folderPath()));
    const QString middle = testhome::path() + "/middle"_L1;
    const QString links = testhome::path() + "/links"_L1;
    QVERIFY(platform::makePrivateFolder(middle));
    QVERIFY(platform::makePrivateFolder(links));
    QVERIFY(QFile::link(folderPath(), middle + "/link"_L1));
    QCOMPARE(::symlink(QFile::encodeName(target).constData(),
                       QFile::encodeName(links + "/link"_L1).constData()),
             0);
    QCOMPARE(::chmod(QFile::encodeName(middle).constData(), mode_t(mode)), 0);
    QTEST(platform::isProtectedFolder(links + "/link"_L1), "isProtected");
}

void tst_PrivateFolder::protectionDependsOnTheOwnerOfALink()
{
    if (::geteuid() != 0) {
        QSKIP("only root can give a link away");
    }
    QVERIFY(platform::makePrivateFolder(folderPath()));
    const QString link = testhome::path() + "/link"_L1;
    QVERIFY(QFile::link(folderPath(), link));
    QVERIFY(platform::isProtectedFolder(link));
    QCOMPARE(::lchown(QFile::encodeName(link).constData(), 65534, 65534), 0);
    QVERIFY(!platform::isProtectedFolder(link));
}

void tst_PrivateFolder::missingFolderIsNotProtected()
{
    QVERIFY(!platform::isProtectedFolder(folderPath()));
}

VASKEL_TEST(tst_PrivateFolder, QCoreApplication)
#include "tst_PrivateFolder.moc"
