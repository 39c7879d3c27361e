// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StartMenu.h"
#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QScopeGuard>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using filecontent::contentOf;

/// What a second scan of a folder takes from the cache of the first one.
class tst_StartMenuCache : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void answersFromTheFirstReading();
    void readsAChangedFile_data();
    void readsAChangedFile();
    void readsANewFileOfTheSameName();
    void noticesAMissingProgram_data();
    void noticesAMissingProgram();
    void noticesAProgramThatIsInstalledLater();
    void keepsOneEntryOfAProgramThatMoves();
    void listsNothingThatIsHidden();
    void keepsLanguagesApart();
    void forgetsWhatIsGone();
    void isNotWrittenWithoutAChange();
    void survivesDamage();
    void worksWithoutAWritableFolder();
};

namespace {

QString root()
{
    return testhome::path() + "/data/applications"_L1;
}

QString write(const QByteArray &lines)
{
    return testhome::writeFile(u"data/applications/a.desktop"_s,
                               "[Desktop Entry]\nType=Application\n" + lines);
}

QString nameOf(const QString &path)
{
    return platform::startMenuNames(root(), {path}).value(path);
}

QString cacheFolder()
{
    return testhome::path() + "/cache/Vaskel/start-menu"_L1;
}

QString cacheFile()
{
    QDirIterator files(cacheFolder(), QDir::Files);
    return files.hasNext() ? files.next() : QString();
}

// Keeps the state of the file, so that only a new reading shows the change.
void changeUnseen(const QString &path, const QByteArray &content)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat before = {};
    QCOMPARE(stat(name.constData(), &before), 0);
    QCOMPARE(qint64(content.size()), qint64(before.st_size));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    file.write(content);
    file.close();
    const timespec times[] = {before.st_atim, before.st_mtim};
    QCOMPARE(utimensat(AT_FDCWD, name.constData(), times, 0), 0);
}

} // namespace

void tst_StartMenuCache::init()
{
    testhome::reset();
    const QByteArray home = testhome::path().toUtf8();
    qputenv("XDG_DATA_HOME", home + "/data");
    qputenv("XDG_DATA_DIRS", home + "/system");
    qputenv("XDG_CACHE_HOME", home + "/cache");
    qputenv("XDG_CURRENT_DESKTOP", "Ours");
    qputenv("LANGUAGE", "");
}

void tst_StartMenuCache::answersFromTheFirstReading()
{
    const QString path = write("Name=First\nExec=true\n");
    QCOMPARE(nameOf(path), u"First"_s);
    changeUnseen(path, contentOf(path).value().replace("First", "Other"));
    QCOMPARE(nameOf(path), u"First"_s);
}

void tst_StartMenuCache::readsAChangedFile_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("of the same size") << QByteArray("Other");
    QTest::newRow("of another size") << QByteArray("Another");
}

void tst_StartMenuCache::readsAChangedFile()
{
    QFETCH(QByteArray, name);
    const QString path = write("Name=First\nExec=true\n");
    QCOMPARE(nameOf(path), u"First"_s);
    write("Name=" + name + "\nExec=true\n");
    // The file system's clock may be too coarse to tell two writes apart.
    const timespec times[] = {{1, 0}, {1, 0}};
    QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
    QCOMPARE(nameOf(path), QString::fromUtf8(name));
}

void tst_StartMenuCache::readsANewFileOfTheSameName()
{
    const QString path = write("Name=First\nExec=true\n");
    QCOMPARE(nameOf(path), u"First"_s);
    struct stat before = {};
    QCOMPARE(stat(QFile::encodeName(path).constData(), &before), 0);

    const QString other = testhome::writeFile(
        u"other"_s, "[Desktop Entry]\nType=Application\nName=Other\nExec=true\n");
    const timespec times[] = {before.st_atim, before.st_mtim};
    QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(other).constData(), times, 0), 0);
    QVERIFY(QFile::remove(path));
    QVERIFY(QFile::rename(other, path));
    QCOMPARE(nameOf(path), u"Other"_s);
}

void tst_StartMenuCache::noticesAMissingProgram_data()
{
    QTest::addColumn<QByteArray>("lines");
    const QByteArray program = testhome::path().toUtf8() + "/program";
    QTest::newRow("the program") << "Exec=" + program + " %U\n";
    QTest::newRow("the one that it asks for") << "Exec=true\nTryExec=" + program + '\n';
}

void tst_StartMenuCache::noticesAMissingProgram()
{
    QFETCH(QByteArray, lines);
    const QString program = testhome::writeFile(u"program"_s, "#!/bin/sh\n");
    QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    const QString path = write("Name=Name\n" + lines);
    QCOMPARE(nameOf(path), u"Name"_s);
    QCOMPARE(nameOf(path), u"Name"_s);
    QVERIFY(QFile::remove(program));
    QCOMPARE(nameOf(path), QString());
}

void tst_StartMenuCache::noticesAProgramThatIsInstalledLater()
{
    const QByteArray program = testhome::path().toUtf8() + "/program";
    const QString path = write("Name=Name\nExec=" + program + '\n');
    QCOMPARE(nameOf(path), QString());
    testhome::writeFile(u"program"_s, "#!/bin/sh\n");
    QVERIFY(QFile::setPermissions(QFile::decodeName(program), QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(nameOf(path), u"Name"_s);
}

void tst_StartMenuCache::keepsOneEntryOfAProgramThatMoves()
{
    const QByteArray path = qgetenv("PATH");
    const auto restorePath = qScopeGuard([&path] { qputenv("PATH", path); });
    const QByteArray home = testhome::path().toUtf8();
    qputenv("PATH", home + "/here:" + home + "/else:" + path);
    const QString here = testhome::writeFile(u"here/program"_s, "#!/bin/sh\n");
    QVERIFY(QFile::setPermissions(here, QFile::ReadOwner | QFile::ExeOwner));
    const QString file = write("Name=Name\nExec=program\n");
    QCOMPARE(nameOf(file), u"Name"_s);
    const auto size = contentOf(cacheFile()).value().size();

    QVERIFY(QDir().mkpath(testhome::path() + "/else"_L1));
    QVERIFY(QFile::rename(here, testhome::path() + "/else/program"_L1));
    QCOMPARE(nameOf(file), u"Name"_s);
    QCOMPARE(contentOf(cacheFile()).value().size(), size);
    const QByteArray content = contentOf(cacheFile()).value();
    QVERIFY(content.contains("/else/program"));
    QVERIFY(!content.contains("/here/program"));
}

void tst_StartMenuCache::listsNothingThatIsHidden()
{
    const QString path = write("Name=Name\nExec=true\nNoDisplay=true\n");
    QVERIFY(platform::startMenuNames(root(), {path}).isEmpty());
    QVERIFY(!cacheFile().isEmpty());
    QVERIFY(platform::startMenuNames(root(), {path}).isEmpty());
}

void tst_StartMenuCache::keepsLanguagesApart()
{
    const QString path = write("Name=Notes\nName[de]=Notizen\nExec=true\n");
    QCOMPARE(nameOf(path), u"Notes"_s);
    qputenv("LANGUAGE", "de");
    QCOMPARE(nameOf(path), u"Notizen"_s);
}

void tst_StartMenuCache::forgetsWhatIsGone()
{
    const QString path = write("Name=Here\nExec=true\n");
    const QString other =
        testhome::writeFile(u"data/applications/gone.desktop"_s,
                            "[Desktop Entry]\nType=Application\nName=Goneaway\nExec=true\n");
    QCOMPARE(platform::startMenuNames(root(), {path, other}).size(), 2);
    const auto size = contentOf(cacheFile()).value().size();
    QCOMPARE(nameOf(path), u"Here"_s);
    QVERIFY(contentOf(cacheFile()).value().size() < size);
}

void tst_StartMenuCache::isNotWrittenWithoutAChange()
{
    const QString path = write("Name=Name\nExec=true\n");
    QCOMPARE(nameOf(path), u"Name"_s);
    QVERIFY(QFile::setPermissions(cacheFile(), QFile::ReadOwner));
    struct stat before = {};
    QCOMPARE(stat(QFile::encodeName(cacheFile()).constData(), &before), 0);
    QCOMPARE(nameOf(path), u"Name"_s);
    struct stat after = {};
    QCOMPARE(stat(QFile::encodeName(cacheFile()).constData(), &after), 0);
    QCOMPARE(after.st_ino, before.st_ino);
}

void tst_StartMenuCache::survivesDamage()
{
    const QString path = write("Name=Name\nExec=true\n");
    QCOMPARE(nameOf(path), u"Name"_s);
    const QByteArray whole = contentOf(cacheFile()).value();
    for (qsizetype size = 0; size < whole.size(); ++size) {
        QFile file(cacheFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(whole.first(size));
        file.close();
        QCOMPARE(nameOf(path), u"Name"_s);
        QCOMPARE(contentOf(cacheFile()), whole);
    }
}

void tst_StartMenuCache::worksWithoutAWritableFolder()
{
    qputenv("XDG_CACHE_HOME", "/dev/null");
    const QString path = write("Name=Name\nExec=true\n");
    QCOMPARE(nameOf(path), u"Name"_s);
    QCOMPARE(nameOf(path), u"Name"_s);
}

VASKEL_TEST(tst_StartMenuCache, QCoreApplication)
#include "tst_StartMenuCache.moc"
