// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/DirectoryPlugin.h"

#include "Titles.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

void setMode(const QString &path, mode_t mode)
{
    if (::chmod(QFile::encodeName(path).constData(), mode) != 0) {
        qFatal("cannot change who may enter a folder");
    }
}

} // namespace

/// Folders that the user may not read, and what is neither a folder nor a file. A reader that waits
/// for a pipe runs into the time limit of the test.
class tst_DirectoryPluginRights : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void listsNothingInAFolderThatTheUserCannotRead();
    void leavesOutPipesAndSockets();
    void takesAPipeForNoFolder();
};

// Root can read everything, so it becomes another user for this case.
void tst_DirectoryPluginRights::listsNothingInAFolderThatTheUserCannotRead()
{
    constexpr uid_t nobody = 65534;
    const QString closed = testhome::path() + "/closed"_L1;
    testhome::writeFile(u"closed/folder/file"_s, {});
    setMode(testhome::path(), 0711);
    setMode(closed, 0);

    const uid_t user = ::geteuid();
    QCOMPARE(::seteuid(user == 0 ? nobody : user), 0);
    const QVariantList records = DirectoryPlugin().query(closed);
    QCOMPARE(::seteuid(user), 0);
    setMode(closed, 0700);
    setMode(testhome::path(), 0700);

    QCOMPARE(titles(records), QStringList(u"Open closed"_s));
    QCOMPARE(records.first().toMap().value(u"subtitle"_s).toString(), closed);
    QCOMPARE(titles(DirectoryPlugin().query(closed)), QStringList({u"Open closed"_s, u"folder"_s}));
}

void tst_DirectoryPluginRights::leavesOutPipesAndSockets()
{
    const QString folder = testhome::path() + "/folder"_L1;
    testhome::writeFile(u"folder/file.png"_s, {});
    QCOMPARE(::mkfifo(QFile::encodeName(folder + "/pipe.png"_L1).constData(), S_IRWXU), 0);
    QCOMPARE(
        ::mknod(QFile::encodeName(folder + "/socket.png"_L1).constData(), S_IFSOCK | S_IRWXU, 0),
        0);
    QCOMPARE(titles(DirectoryPlugin().query(folder)),
             QStringList({u"Open folder"_s, u"file.png"_s}));
    // A symbolic link is listed, but nothing of its target is read.
    QVERIFY(QFile::link(folder + "/pipe.png"_L1, folder + "/link.png"_L1));
    QCOMPARE(titles(DirectoryPlugin().query(folder)),
             QStringList({u"Open folder"_s, u"file.png"_s, u"link.png"_s}));
}

void tst_DirectoryPluginRights::takesAPipeForNoFolder()
{
    const QString pipe = testhome::path() + "/pipe"_L1;
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), S_IRWXU), 0);
    QCOMPARE(titles(DirectoryPlugin().query(pipe)), QStringList(u"Directory does not exist"_s));
}

VASKEL_TEST(tst_DirectoryPluginRights, QApplication)
#include "tst_DirectoryPluginRights.moc"
