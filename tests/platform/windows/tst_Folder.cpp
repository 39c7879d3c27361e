// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Folder.h"

#include "platform/windows/Recording.h"
#include "plugins/OpenedFiles.h"
#include "plugins/Titles.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include "commands/ScriptPlugin.h"
#include "core/ResultRecord.h"
#include "plugins/DirectoryPlugin.h"
#include "plugins/FilePlugin.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

QString shownFoldersFile()
{
    return testhome::path() + "/shown.txt"_L1;
}

void setAttributes(const QString &path, DWORD attributes)
{
    QVERIFY(SetFileAttributesW(qUtf16Printable(QDir::toNativeSeparators(path)), attributes));
}

} // namespace

/// Folders that the directory browser lists and the shell opens.
class tst_Folder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void opensTheChosenFolder_data();
    void opensTheChosenFolder();
    void opensTheFolderBesideAProgramOfItsName();
    void opensAFolderThatWasFoundAsSuch();
    void opensAFileBesideAProgramOfItsName();
    void opensAFileOfACommandBesideAProgramOfItsName();
    void refusesAFolderThatIsMissing();
    void leavesOutHiddenEntries();
    void hasNoNameForADrive();
};

void tst_Folder::init()
{
    testhome::reset();
    qputenv("VASKEL_SHOWN_FOLDERS", shownFoldersFile().toLocal8Bit());
    recording::becomeFileManager();
}

void tst_Folder::opensTheChosenFolder_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("type");
    QTest::newRow("the listed one") << u"folder"_s << u"openFolder"_s;
    QTest::newRow("one of the rows") << u"folder"_s << u"navigate"_s;
    QTest::newRow("blanks and Chinese") << u"my 文件"_s << u"navigate"_s;
}

void tst_Folder::opensTheChosenFolder()
{
    QFETCH(QString, name);
    QFETCH(QString, type);
    const QString path = testhome::path() + u'/' + name;
    QVERIFY(QDir().mkpath(path));
    DirectoryPlugin plugin;
    const QVariantList records =
        type == "navigate"_L1 ? plugin.query(testhome::path()) : plugin.query(path);
    QVariantMap action;
    for (const QVariant &record : records) {
        const QVariantMap its = record.toMap().value(u"action"_s).toMap();
        if (its.value(u"data"_s) == path) {
            action = its;
        }
    }
    QCOMPARE(action.value(u"type"_s), type);
    QVERIFY(plugin.execute(action));
    QTRY_COMPARE(recording::shownFolders(shownFoldersFile()), QStringList{path});
}

// The shell of Windows tries the suffixes of programs for a name without one.
void tst_Folder::opensTheFolderBesideAProgramOfItsName()
{
    const QString path = testhome::path() + "/Photos"_L1;
    QVERIFY(QDir().mkpath(path));
    QVERIFY(QFile::copy(recording::program(), path + ".exe"_L1));
    QVERIFY(platform::openFolder(path));
    QTRY_COMPARE(recording::shownFolders(shownFoldersFile()), QStringList{path});
    QVERIFY(!QFile::exists(path + ".exe.txt"_L1));
    // Wine tries no suffixes for a folder that exists, but it passes the separator on.
    const QString given = recording::starts(shownFoldersFile()).first().value(2);
    QVERIFY2(given.size() > path.size(), qPrintable(given));
}

void tst_Folder::opensAFolderThatWasFoundAsSuch()
{
    const QString path = testhome::path() + "/Photos"_L1;
    QVERIFY(QDir().mkpath(path));
    QVERIFY(QFile::copy(recording::program(), path + ".exe"_L1));
    QVERIFY(FilePlugin(nullptr).execute(
        makeAction(actiontype::openFile, QDir::toNativeSeparators(path), u"file"_s)));
    QTRY_COMPARE(recording::shownFolders(shownFoldersFile()), QStringList{path});
    QVERIFY(!QFile::exists(path + ".exe.txt"_L1));
    const QString given = recording::starts(shownFoldersFile()).first().value(2);
    QVERIFY2(given.size() > path.size(), qPrintable(given));
}

// A dot at the end is all that keeps the shell from trying the suffixes of programs.
void tst_Folder::opensAFileBesideAProgramOfItsName()
{
    const QString path = testhome::writeFile(u"README"_s, {});
    const OpenedFiles opened;
    const QVariantMap action = makeAction(actiontype::openFile, path, {});
    QVERIFY(FilePlugin(nullptr).execute(action));
    QVERIFY(DirectoryPlugin().execute(action));
    QCOMPARE(opened.paths, QStringList({path + u'.', path + u'.'}));
    QVERIFY(QFile::exists(opened.paths.first()));
}

void tst_Folder::opensAFileOfACommandBesideAProgramOfItsName()
{
    const QString path = testhome::writeFile(u"README"_s, {});
    const OpenedFiles opened;
    ScriptPlugin plugin(CommandFile(), nullptr);
    QVERIFY(plugin.execute(makeAction(actiontype::openFile, path, {})));
    QCOMPARE(opened.paths, QStringList(path + u'.'));
}

void tst_Folder::refusesAFolderThatIsMissing()
{
    QVERIFY(!platform::openFolder(testhome::path() + "/missing"_L1));
}

void tst_Folder::leavesOutHiddenEntries()
{
    for (const QString &name : {u"hidden"_s, u"shown"_s}) {
        testhome::writeFile(u"docs/"_s + name, {});
    }
    setAttributes(testhome::path() + "/docs/hidden"_L1, FILE_ATTRIBUTE_HIDDEN);
    QCOMPARE(titles(DirectoryPlugin().query(testhome::path() + "/docs"_L1)),
             QStringList({u"Open docs"_s, u"shown"_s}));
}

void tst_Folder::hasNoNameForADrive()
{
    const QVariantMap record = DirectoryPlugin().query(u"C:/"_s).first().toMap();
    QCOMPARE(record.value(u"title"_s).toString(), u"Open "_s);
    QCOMPARE(record.value(u"subtitle"_s).toString(), u"C:/"_s);
}

VASKEL_TEST(tst_Folder, QApplication)
#include "tst_Folder.moc"
