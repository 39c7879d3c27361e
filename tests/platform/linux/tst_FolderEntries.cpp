// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FolderEntries.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

QString folder()
{
    return testhome::path() + "/folder"_L1;
}

/// The sorted names, with a slash behind those of folders.
QStringList listed()
{
    QStringList names;
    for (const platform::FolderEntry &entry : platform::folderEntries(folder())) {
        names.append(entry.isFolder ? entry.name + u'/' : entry.name);
    }
    names.sort();
    return names;
}

} // namespace

/// Entries whose kind the folder itself does not tell.
class tst_FolderEntries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void takesTheTargetOfASymbolicLink();
    void leavesOutWhatIsNoFile();
};

void tst_FolderEntries::init()
{
    testhome::reset();
    QVERIFY(QDir().mkpath(folder()));
}

void tst_FolderEntries::takesTheTargetOfASymbolicLink()
{
    testhome::writeFile(u"target/file"_s, {});
    QVERIFY(QFile::link(testhome::path() + "/target"_L1, folder() + "/toFolder"_L1));
    QVERIFY(QFile::link(testhome::path() + "/target/file"_L1, folder() + "/toFile"_L1));
    QVERIFY(QFile::link(testhome::path() + "/gone"_L1, folder() + "/toNothing"_L1));
    QVERIFY(QFile::link(folder() + "/toItself"_L1, folder() + "/toItself"_L1));
    QCOMPARE(listed(), QStringList({u"toFile"_s, u"toFolder/"_s}));
}

void tst_FolderEntries::leavesOutWhatIsNoFile()
{
    const QString pipe = folder() + "/pipe"_L1;
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), S_IRUSR | S_IWUSR), 0);
    QVERIFY(QFile::link(pipe, folder() + "/toPipe"_L1));
    QVERIFY(QFile::link(u"/dev/null"_s, folder() + "/toDevice"_L1));
    QCOMPARE(listed(), QStringList());
}

VASKEL_TEST(tst_FolderEntries, QCoreApplication)
#include "tst_FolderEntries.moc"
