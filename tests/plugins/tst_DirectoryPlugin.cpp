// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/DirectoryPlugin.h"

#include "plugins/IconTheme.h"
#include "plugins/OpenedFiles.h"
#include "support/FakePlatform.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QStandardPaths>
#include <QTest>
#include <QTranslator>

#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Translates every text of one context; a text of another context stays English.
class DirectoryTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "DirectoryPlugin") == 0 ? u'<' + QString::fromUtf8(source) + u'>'
                                                        : QString();
    }
};

// On Windows it is outside the test's home, so cleanup() removes what a case has created there.
QString homePath()
{
    return QDir::homePath();
}

QString otherPath()
{
    return testhome::path() + "/other"_L1;
}

// The entries that the case has created there, by the first part of their path.
QStringList &added()
{
    static QStringList names;
    return names;
}

QString addFolder(const QString &relativePath)
{
    added().append(relativePath.section(u'/', 0, 0));
    QString path = homePath() + u'/' + relativePath;
    QDir().mkpath(path);
    return path;
}

QString addFile(const QString &relativePath, const QByteArray &content = "text")
{
    added().append(relativePath.section(u'/', 0, 0));
    QString path = homePath() + u'/' + relativePath;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qUtf8Printable(path));
    }
    return path;
}

QString iconFolder()
{
    return QDir::tempPath() + "/Vaskel/icons"_L1;
}

QString iconFile(const QString &path)
{
    return iconFolder() + "/dir_"_L1 + QString::number(qHash(QStringView(path), 0), 16) + ".png"_L1;
}

QVariantMap action(const QString &type, const QString &path)
{
    return {{u"type"_s, type}, {u"data"_s, path}, {u"plugin"_s, u"cd"_s}};
}

QVariantMap record(const QString &title, const QString &subtitle, const QString &icon,
                   const QVariantMap &itsAction)
{
    return {{u"title"_s, title},
            {u"subtitle"_s, subtitle},
            {u"icon"_s, icon},
            {u"action"_s, itsAction}};
}

QVariantMap openRecord(const QString &path)
{
    return record(u"Open "_s + QDir(path).dirName(), path, QString(),
                  action(u"openFolder"_s, path));
}

QVariantMap folderRecord(const QString &path)
{
    return record(QFileInfo(path).fileName(), u"Folder"_s, iconFile(path),
                  action(u"navigate"_s, path));
}

QVariantMap fileRecord(const QString &path, const QString &subtitle)
{
    return record(QFileInfo(path).fileName(), subtitle, iconFile(path),
                  action(u"openFile"_s, path));
}

QVariantList query(const QString &args)
{
    return DirectoryPlugin().query(args);
}

QString field(const QVariant &element, const QString &key)
{
    return element.toMap().value(key).toString();
}

QStringList column(const QVariantList &records, const QString &key)
{
    QStringList values;
    for (const QVariant &element : records) {
        values.append(field(element, key));
    }
    return values;
}

/// The folder that is listed for these arguments.
QString listedFolder(const QString &args)
{
    const QVariantList records = query(args);
    return records.isEmpty() ? u"none"_s : field(records.first(), u"subtitle"_s);
}

/// The titles of all records but the first.
QStringList entries(const QString &args)
{
    return column(query(args), u"title"_s).mid(1);
}

void makeBytesFile(const QString &folder, const QByteArray &name)
{
    const QByteArray path = QFile::encodeName(folder) + '/' + name;
    FILE *file = std::fopen(path.constData(), "w");
    if (!file) {
        qFatal("cannot write a file of that name");
    }
    std::fclose(file);
}

} // namespace

class tst_DirectoryPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void answersTheContract();
    void findsTheFolder_data();
    void findsTheFolder();
    void addsNoSlashToTheHomeFolder();
    void prefersTheCurrentFolderToTheHomeFolder();
    void reportsAFile_data();
    void reportsAFile();
    void reportsAMissingHomeFolder();
    void listsFoldersBeforeFilesAndCapitalsBeforeSmallLetters();
    void showsTheSuffixOfAFile_data();
    void showsTheSuffixOfAFile();
    void showsNoSuffixAfterATrailingDot();
    void listsNothingInAnEmptyFolder();
    void hasNoNameForTheRoot();
    void leavesOutHiddenEntries();
    void leavesOutWhatIsNeitherFileNorFolder();
    void followsASymbolicLinkToAFolder();
    void listsNamesOfAnyKind_data();
    void listsNamesOfAnyKind();
    void listsNamesThatWindowsRefuses_data();
    void listsNamesThatWindowsRefuses();
    void survivesANameThatIsNotUnicode();
    void listsTenThousandFiles();
    void readsTheDiskAtEachQuery();

    void drawsAnIconOnceForEachEntry();
    void usesTheIconThatALinkNames();
    void savesASmallIconUnscaled();
    void doesNotDrawAnIconAgain();
    void listsWithoutIconsIfTheyCannotBeSaved_data();
    void listsWithoutIconsIfTheyCannotBeSaved();

    void opensAFolder_data();
    void opensAFolder();
    void opensAFile_data();
    void opensAFile();
    void refusesWhatItCannotOpen_data();
    void refusesWhatItCannotOpen();
    void textsAreTranslatedInItsContext();

private:
    QString m_currentPath;
};

void tst_DirectoryPlugin::initTestCase()
{
    m_currentPath = QDir::currentPath();
    qputenv("HOME", QFile::encodeName(testhome::path() + "/home"_L1));
    if (!homePath().startsWith(testhome::path())
        && qEnvironmentVariableIsEmpty("VASKEL_TEST_PREFIX")) {
        qFatal("the user's own home folder would be written to");
    }
}

void tst_DirectoryPlugin::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
    qputenv("HOME", QFile::encodeName(testhome::path() + "/home"_L1));
    QDir().mkpath(homePath());
    QDir().mkpath(otherPath());
    QVERIFY(QDir::setCurrent(otherPath()));
}

void tst_DirectoryPlugin::cleanup()
{
    QDir::setCurrent(m_currentPath);
    for (const QString &name : std::exchange(added(), {})) {
        const QString path = homePath() + u'/' + name;
        if (QFileInfo(path).isDir()) {
            QDir(path).removeRecursively();
        } else {
            QFile::remove(path);
        }
    }
}

void tst_DirectoryPlugin::answersTheContract()
{
    QObject parent;
    DirectoryPlugin plugin(&parent);
    QCOMPARE(plugin.parent(), &parent);
    QCOMPARE(plugin.command(), u"cd"_s);
    QCOMPARE(plugin.description(), u"Directory browser and navigation"_s);
    QVERIFY(plugin.aliases().isEmpty());
    QVERIFY(!plugin.hasView());
    plugin.setViewCommand(u"cd"_s);
    QVERIFY(!plugin.createView());
}

void tst_DirectoryPlugin::findsTheFolder_data()
{
    QTest::addColumn<QString>("args");
    QTest::addColumn<QString>("folder");

    QTest::newRow("nothing: the home folder") << QString() << homePath();
    QTest::newRow("blanks: the home folder") << u"  \t"_s << homePath();
    QTest::newRow("tilde: the home folder") << u"~"_s << homePath();
    QTest::newRow("tilde and slash: the home folder") << u"~/"_s << homePath();
    QTest::newRow("below the tilde") << u"~/docs"_s << homePath() + "/docs"_L1;
    QTest::newRow("blanks around") << u"  ~/docs "_s << homePath() + "/docs"_L1;
    QTest::newRow("blank inside") << u"~/my docs"_s << homePath() + "/my docs"_L1;
    QTest::newRow("absolute") << homePath() + "/docs"_L1 << homePath() + "/docs"_L1;
    QTest::newRow("slash at the end") << homePath() + "/docs/"_L1 << homePath() + "/docs"_L1;
    QTest::newRow("below the home folder alone") << u"docs"_s << homePath() + "/docs"_L1;
    QTest::newRow("below the current folder") << u"here"_s << otherPath() + "/here"_L1;
    QTest::newRow("the current folder") << u"."_s << otherPath();
    QTest::newRow("half-typed: the home folder") << u"~/do"_s << homePath();
    QTest::newRow("no such path: the home folder") << u"/no/such/path"_s << homePath();
    QTest::newRow("no such name: the home folder") << u"nowhere"_s << homePath();
}

void tst_DirectoryPlugin::findsTheFolder()
{
    QFETCH(const QString, args);
    addFolder(u"docs"_s);
    addFolder(u"my docs"_s);
    QVERIFY(QDir(otherPath()).mkdir(u"here"_s));
    QTEST(listedFolder(args), "folder");
}

void tst_DirectoryPlugin::addsNoSlashToTheHomeFolder()
{
    QVERIFY(QDir().mkpath(homePath() + "stead"_L1));
    const QString listed = listedFolder(u"~stead"_s);
    QVERIFY(QDir().rmdir(homePath() + "stead"_L1));
    QCOMPARE(listed, homePath() + "stead"_L1);
}

void tst_DirectoryPlugin::prefersTheCurrentFolderToTheHomeFolder()
{
    addFolder(u"docs"_s);
    QVERIFY(QDir(otherPath()).mkdir(u"docs"_s));
    QCOMPARE(listedFolder(u"docs"_s), otherPath() + "/docs"_L1);
}

void tst_DirectoryPlugin::reportsAFile_data()
{
    QTest::addColumn<QString>("args");

    QTest::newRow("absolute") << homePath() + "/file.txt"_L1;
    QTest::newRow("below the tilde") << u"~/file.txt"_s;
    QTest::newRow("below the home folder") << u"file.txt"_s;
    QTest::newRow("blanks around") << u" file.txt  "_s;
}

void tst_DirectoryPlugin::reportsAFile()
{
    QFETCH(const QString, args);
    addFile(u"file.txt"_s);
    const QVariantMap expected = record(u"Directory does not exist"_s, args, QString(),
                                        {{u"type"_s, u"none"_s}, {u"plugin"_s, u"cd"_s}});
    QCOMPARE(query(args), QVariantList{expected});
}

void tst_DirectoryPlugin::reportsAMissingHomeFolder()
{
    qputenv("HOME", QFile::encodeName(testhome::path() + "/missing"_L1));
    const QVariantList records = query(u" "_s);
    QCOMPARE(column(records, u"title"_s), QStringList(u"Directory does not exist"_s));
    QCOMPARE(column(records, u"subtitle"_s), QStringList(u" "_s));
}

void tst_DirectoryPlugin::listsFoldersBeforeFilesAndCapitalsBeforeSmallLetters()
{
    const QString apple = addFile(u"docs/apple.txt"_s);
    const QString zebra = addFile(u"docs/Zebra.txt"_s);
    const QString works = addFolder(u"docs/works"_s);
    const QString xylo = addFolder(u"docs/Xylophone"_s);

    QCOMPARE(
        query(u"~/docs"_s),
        QVariantList({openRecord(homePath() + "/docs"_L1), folderRecord(xylo), folderRecord(works),
                      fileRecord(zebra, u"TXT"_s), fileRecord(apple, u"TXT"_s)}));
}

void tst_DirectoryPlugin::showsTheSuffixOfAFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("subtitle");

    QTest::newRow("small letters") << u"a.txt"_s << u"TXT"_s;
    QTest::newRow("none") << u"Makefile"_s << QString();
    QTest::newRow("the last of two") << u"a.tar.gz"_s << u"GZ"_s;
    QTest::newRow("letters beyond ASCII") << u"a.été"_s << u"ÉTÉ"_s;
}

void tst_DirectoryPlugin::showsTheSuffixOfAFile()
{
    QFETCH(const QString, name);
    QFETCH(const QString, subtitle);
    const QString path = addFile(u"docs/"_s + name);
    QCOMPARE(query(u"docs"_s).mid(1), QVariantList{fileRecord(path, subtitle)});
}

void tst_DirectoryPlugin::showsNoSuffixAfterATrailingDot()
{
    const QString path = addFile(u"docs/a."_s);
    QCOMPARE(query(u"docs"_s).mid(1), QVariantList{fileRecord(path, QString())});
}

void tst_DirectoryPlugin::listsNothingInAnEmptyFolder()
{
    const QString path = addFolder(u"empty"_s);
    QCOMPARE(query(u"empty"_s), QVariantList{openRecord(path)});
}

void tst_DirectoryPlugin::hasNoNameForTheRoot()
{
    const QVariantList records = query(QDir::rootPath());
    QVERIFY(records.size() > 1);
    QCOMPARE(field(records.first(), u"title"_s), u"Open "_s);
    QCOMPARE(field(records.first(), u"subtitle"_s), QDir::rootPath());
}

void tst_DirectoryPlugin::leavesOutHiddenEntries()
{
    addFile(u"docs/.hidden"_s);
    addFolder(u"docs/.folder"_s);
    addFile(u"docs/shown"_s);
    QCOMPARE(entries(u"docs"_s), QStringList(u"shown"_s));
}

void tst_DirectoryPlugin::leavesOutWhatIsNeitherFileNorFolder()
{
    const QString folder = addFolder(u"docs"_s);
    QVERIFY(QFile::link(folder + "/nowhere"_L1, folder + "/dangling"_L1));
    QVERIFY(QFile::link(folder + "/two"_L1, folder + "/one"_L1));
    QVERIFY(QFile::link(folder + "/one"_L1, folder + "/two"_L1));
    QVERIFY(QFile::link(folder + "/self"_L1, folder + "/self"_L1));
    addFile(u"docs/file"_s);
    QCOMPARE(entries(u"docs"_s), QStringList(u"file"_s));
}

void tst_DirectoryPlugin::followsASymbolicLinkToAFolder()
{
    const QString folder = addFolder(u"docs"_s);
    QVERIFY(QFile::link(folder, folder + "/circle"_L1));
    QCOMPARE(query(u"docs"_s).mid(1), QVariantList{folderRecord(folder + "/circle"_L1)});
    QCOMPARE(listedFolder(u"docs/circle/circle"_s), folder + "/circle/circle"_L1);
}

void tst_DirectoryPlugin::listsNamesOfAnyKind_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("255 bytes") << QString(255, u'x');
    QTest::newRow("255 bytes in Chinese") << QString(85, u'文');
    QTest::newRow("what addresses escape") << u"100% #1"_s;
    QTest::newRow("references") << u"&amp; & file"_s;
    QTest::newRow("blanks") << u"two  words"_s;
}

void tst_DirectoryPlugin::listsNamesOfAnyKind()
{
    QFETCH(const QString, name);
    const QString path = addFile(u"docs/"_s + name);
    const QVariantList rows = query(u"docs"_s).mid(1);
    QCOMPARE(column(rows, u"title"_s), QStringList(name));
    QVERIFY(QFile::exists(field(rows.first(), u"icon"_s)));

    OpenedFiles opened;
    QVERIFY(DirectoryPlugin().execute(rows.first().toMap().value(u"action"_s).toMap()));
    QCOMPARE(opened.paths, QStringList(path));
}

void tst_DirectoryPlugin::listsNamesThatWindowsRefuses_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("line feed") << u"first\nsecond"_s;
    QTest::newRow("question mark") << u"what?"_s;
    QTest::newRow("backslash") << u"back\\slash"_s;
    QTest::newRow("mark-up") << u"<b>&amp;"_s;
}

void tst_DirectoryPlugin::listsNamesThatWindowsRefuses()
{
    listsNamesOfAnyKind();
}

void tst_DirectoryPlugin::survivesANameThatIsNotUnicode()
{
    const QString folder = addFolder(u"docs"_s);
    makeBytesFile(folder, "bad \xff\xfe.txt");
    addFile(u"docs/good.txt"_s);
    const QStringList names = entries(u"docs"_s);
    QCOMPARE(std::remove(QFile::encodeName(folder) + "/bad \xff\xfe.txt"),
             0); // QFile cannot remove it
    QVERIFY(names.contains(u"good.txt"_s));
}

void tst_DirectoryPlugin::listsTenThousandFiles()
{
    const QString folder = addFolder(u"docs"_s);
    for (int index = 0; index < 10000; ++index) {
        makeBytesFile(folder, QByteArray::number(100000 + index));
    }
    const QVariantList records = query(u"docs"_s);
    QCOMPARE(records.size(), 10001);
    QCOMPARE(field(records.at(1), u"title"_s), u"100000"_s);
    QCOMPARE(field(records.last(), u"title"_s), u"109999"_s);
    QVERIFY(QFile::exists(field(records.last(), u"icon"_s)));
    QCOMPARE(query(u"docs"_s), records);
}

void tst_DirectoryPlugin::readsTheDiskAtEachQuery()
{
    DirectoryPlugin plugin;
    const QString path = addFile(u"docs/one"_s);
    QCOMPARE(plugin.query(u"docs"_s).size(), 2);
    addFile(u"docs/two"_s);
    QCOMPARE(plugin.query(u"docs"_s).size(), 3);
    QVERIFY(QFile::remove(path));
    QCOMPARE(column(plugin.query(u"docs"_s).mid(1), u"title"_s), QStringList(u"two"_s));
}

void tst_DirectoryPlugin::drawsAnIconOnceForEachEntry()
{
    useIconsOfSize(32);
    const QString file = addFile(u"docs/file.txt"_s);
    const QString folder = addFolder(u"docs/folder"_s);
    const QStringList icons = column(query(u"docs"_s), u"icon"_s);
    QCOMPARE(icons, QStringList({QString(), iconFile(folder), iconFile(file)}));
    for (const QString &icon : icons.mid(1)) {
        QCOMPARE(QImage(icon, "PNG").size(), QSize(32, 32));
        QCOMPARE(QImage(icon, "PNG").pixel(16, 16), QColor(Qt::red).rgb());
    }
    QCOMPARE(QDir(iconFolder()).entryList(QDir::Files).size(), 2);
}

void tst_DirectoryPlugin::usesTheIconThatALinkNames()
{
    const QString file = addFile(u"docs/program.link"_s);
    QPixmap own(32, 32);
    own.fill(Qt::green);
    fakePlatform().linkIcons.insert(file, QIcon(own));
    query(u"docs"_s);
    QCOMPARE(QImage(iconFile(file), "PNG").pixel(16, 16), QColor(Qt::green).rgb());
}

void tst_DirectoryPlugin::savesASmallIconUnscaled()
{
    useIconsOfSize(16);
    const QString file = addFile(u"docs/file.txt"_s);
    query(u"docs"_s);
    QCOMPARE(QImage(iconFile(file), "PNG").size(), QSize(16, 16));
}

void tst_DirectoryPlugin::doesNotDrawAnIconAgain()
{
    const QString file = addFile(u"docs/file.txt"_s);
    const QString relativePath = QDir(testhome::path()).relativeFilePath(iconFile(file));
    testhome::writeFile(relativePath, "old icon");

    QCOMPARE(field(query(u"docs"_s).last(), u"icon"_s), iconFile(file));
    QFile icon(iconFile(file));
    QVERIFY(icon.open(QIODevice::ReadOnly));
    QCOMPARE(icon.readAll(), QByteArray("old icon"));
}

void tst_DirectoryPlugin::listsWithoutIconsIfTheyCannotBeSaved_data()
{
    QTest::addColumn<QString>("fileInTheWay");

    QTest::newRow("a file in place of the folder") << u"tmp/Vaskel/icons"_s;
    QTest::newRow("a file in place of its parent") << u"tmp/Vaskel"_s;
}

void tst_DirectoryPlugin::listsWithoutIconsIfTheyCannotBeSaved()
{
    QFETCH(const QString, fileInTheWay);
    const QString file = addFile(u"docs/file.txt"_s);
    testhome::writeFile(fileInTheWay, "in the way");
    // Otherwise the icons would be in the user's cache instead.
    fakePlatform().foreignFolders = {QStandardPaths::writableLocation(QStandardPaths::CacheLocation)
                                     + "/icons"_L1};
    QCOMPARE(query(u"docs"_s).mid(1),
             QVariantList{record(u"file.txt"_s, u"TXT"_s, QString(), action(u"openFile"_s, file))});
}

void tst_DirectoryPlugin::opensAFolder_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("isTaken");

    QTest::newRow("the listed one") << u"openFolder"_s << true;
    QTest::newRow("one of the rows") << u"navigate"_s << true;
    QTest::newRow("the listed one, in vain") << u"openFolder"_s << false;
    QTest::newRow("one of the rows, in vain") << u"navigate"_s << false;
}

void tst_DirectoryPlugin::opensAFolder()
{
    QFETCH(const QString, type);
    QFETCH(const bool, isTaken);
    fakePlatform().openFolderResult = isTaken;

    const OpenedFiles opened;
    QCOMPARE(DirectoryPlugin().execute(action(type, homePath())), isTaken);
    QCOMPARE(fakePlatform().openedFolders, QStringList(homePath()));
    QVERIFY(opened.paths.isEmpty());
}

void tst_DirectoryPlugin::opensAFile_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("plain") << u"/a/b.txt"_s;
    QTest::newRow("what addresses escape") << u"/a b/100% #1?.txt"_s;
}

void tst_DirectoryPlugin::opensAFile()
{
    QFETCH(const QString, path);

    const OpenedFiles opened;
    QVERIFY(DirectoryPlugin().execute(action(u"openFile"_s, path)));
    QCOMPARE(opened.paths, QStringList(path));
    QVERIFY(fakePlatform().openedFolders.isEmpty());
}

void tst_DirectoryPlugin::refusesWhatItCannotOpen_data()
{
    QTest::addColumn<QVariantMap>("action");

    QTest::newRow("no keys") << QVariantMap();
    QTest::newRow("no type") << QVariantMap{{u"data"_s, u"/"_s}};
    for (const QString &type : {u"openFolder"_s, u"openFile"_s, u"navigate"_s}) {
        QTest::addRow("%s, empty", qPrintable(type)) << action(type, QString());
        QTest::addRow("%s, no data", qPrintable(type)) << QVariantMap{{u"type"_s, type}};
    }
    for (const QString &type : {u"none"_s, u"launch"_s, u"openfile"_s, u"Navigate"_s, u""_s}) {
        QTest::addRow("type \"%s\"", qPrintable(type)) << action(type, u"/"_s);
    }
}

void tst_DirectoryPlugin::refusesWhatItCannotOpen()
{
    QFETCH(const QVariantMap, action);

    const OpenedFiles opened;
    QVERIFY(!DirectoryPlugin().execute(action));
    QVERIFY(fakePlatform().openedFolders.isEmpty());
    QVERIFY(opened.paths.isEmpty());
}

void tst_DirectoryPlugin::textsAreTranslatedInItsContext()
{
    DirectoryTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    addFolder(u"docs/folder"_s);
    const QString file = addFile(u"file"_s);

    QCOMPARE(DirectoryPlugin().description(), u"<Directory browser and navigation>"_s);
    QCOMPARE(column(query(u"docs"_s), u"title"_s), QStringList({u"<Open >docs"_s, u"folder"_s}));
    QCOMPARE(field(query(u"docs"_s).last(), u"subtitle"_s), u"<Folder>"_s);
    QCOMPARE(column(query(file), u"title"_s), QStringList(u"<Directory does not exist>"_s));
}

VASKEL_TEST(tst_DirectoryPlugin, QApplication)
#include "tst_DirectoryPlugin.moc"
