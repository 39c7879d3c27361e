// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFile.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr uid_t nobody = 65534;

QString filePath()
{
    return testhome::path() + "/tmp/file"_L1;
}

QString folderPath()
{
    return testhome::path() + "/tmp"_L1;
}

struct stat statusOf(const QString &path)
{
    struct stat status = {};
    ::lstat(QFile::encodeName(path).constData(), &status);
    return status;
}

// Debian gives each user such a group.
bool hasOwnGroup()
{
    const QByteArray user = ::getpwuid(::geteuid())->pw_name;
    return user == ::getgrgid(::getegid())->gr_name;
}

bool opens()
{
    QFile file(filePath());
    return platform::openPrivateFile(file, QIODevice::WriteOnly);
}

} // namespace

class tst_PrivateFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }

    void createsTheFileForTheUserAlone();
    void restrictsAnEarlierFileToTheUser();
    void keepsOtherHardLinksOfAnEarlierFile();
    void refusesWhatIsNoFile_data();
    void refusesWhatIsNoFile();
    void refusesAFolderInWhichOthersCanReplaceFiles_data();
    void refusesAFolderInWhichOthersCanReplaceFiles();
};

void tst_PrivateFile::createsTheFileForTheUserAlone()
{
    const mode_t mask = ::umask(0);
    const bool isOpen = opens();
    ::umask(mask);
    QVERIFY(isOpen);
    QCOMPARE(int(statusOf(filePath()).st_mode & 07777), 0600);
}

void tst_PrivateFile::restrictsAnEarlierFileToTheUser()
{
    testhome::writeFile(u"tmp/file"_s, "a leftover");
    QCOMPARE(::chmod(QFile::encodeName(filePath()).constData(), 0666), 0);
    QVERIFY(opens());
    QCOMPARE(int(statusOf(filePath()).st_mode & 07777), 0600);
    QCOMPARE(int(statusOf(filePath()).st_size), 0);
}

// Another user may have created a hard link to one of the user's own files.
void tst_PrivateFile::keepsOtherHardLinksOfAnEarlierFile()
{
    const QString own = testhome::writeFile(u"own"_s, "content");
    QCOMPARE(::link(QFile::encodeName(own).constData(), QFile::encodeName(filePath()).constData()),
             0);
    QVERIFY(opens());
    QCOMPARE(QFileInfo(own).size(), 7);
}

void tst_PrivateFile::refusesWhatIsNoFile_data()
{
    QTest::addColumn<QString>("linkTarget");
    QTest::newRow("symbolic link to a file of the user's own") << u"own"_s;
    QTest::newRow("symbolic link to nothing") << u"nowhere"_s;
    QTest::newRow("symbolic link to itself") << u"file"_s;
    QTest::newRow("named pipe") << QString();
}

void tst_PrivateFile::refusesWhatIsNoFile()
{
    QFETCH(QString, linkTarget);
    const QString own = testhome::writeFile(u"tmp/own"_s, "content");
    const QByteArray name = QFile::encodeName(filePath());
    if (linkTarget.isEmpty()) {
        QCOMPARE(::mkfifo(name.constData(), 0600), 0);
    } else {
        QCOMPARE(::symlink(QFile::encodeName(linkTarget).constData(), name.constData()), 0);
    }
    const auto inode = statusOf(filePath()).st_ino;

    QVERIFY(!opens());
    QCOMPARE(QFileInfo(own).size(), 7);
    QVERIFY(!QFile::exists(folderPath() + "/nowhere"_L1));
    QCOMPARE(statusOf(filePath()).st_ino, inode);
}

void tst_PrivateFile::refusesAFolderInWhichOthersCanReplaceFiles_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<uid_t>("owner");
    QTest::addColumn<gid_t>("group");
    QTest::addColumn<bool>("isTaken");
    const uid_t user = ::geteuid();
    const gid_t own = ::getegid();
    QTest::newRow("the user's own") << 0755 << user << own << true;
    QTest::newRow("shared and sticky") << 01777 << user << own << true;
    QTest::newRow("shared") << 0777 << user << own << false;
    QTest::newRow("shared with all but the group") << 0757 << user << own << false;
    QTest::newRow("open to the group of the user's name") << 0775 << user << own << hasOwnGroup();
    QTest::newRow("open to another group") << 0775 << user << nobody << false;
    QTest::newRow("open to another group and sticky") << 01775 << user << nobody << true;
    QTest::newRow("of another group, which may not write") << 0755 << user << nobody << true;
    QTest::newRow("of another user") << 0755 << nobody << nobody << false;
    QTest::newRow("of another user, shared and sticky") << 01777 << nobody << nobody << false;
}

void tst_PrivateFile::refusesAFolderInWhichOthersCanReplaceFiles()
{
    QFETCH(int, mode);
    QFETCH(uid_t, owner);
    QFETCH(gid_t, group);
    QFETCH(bool, isTaken);
    const QByteArray folder = QFile::encodeName(folderPath());
    if (::chown(folder.constData(), owner, group) != 0) {
        QSKIP("only root can give a folder away");
    }
    QCOMPARE(::chmod(folder.constData(), mode_t(mode)), 0);
    const bool isOpen = opens();
    const bool isThere = QFile::exists(filePath());
    QCOMPARE(::chown(folder.constData(), ::geteuid(), ::getegid()), 0);
    QCOMPARE(::chmod(folder.constData(), 0755), 0);
    QCOMPARE(isOpen, isTaken);
    QCOMPARE(isThere, isTaken);
}

VASKEL_TEST(tst_PrivateFile, QCoreApplication)
#include "tst_PrivateFile.moc"
