// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/FilePlugin.h"

#include "core/RowsChanged.h"
#include "plugins/IconTheme.h"
#include "plugins/OpenedFiles.h"
#include "support/FakePlatform.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QImage>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QTranslator>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Translates every text of one context; a text of another context stays English.
class FileTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "FilePlugin") == 0 ? u'<' + QString::fromUtf8(source) + u'>'
                                                   : QString();
    }
};

QString iconFolder()
{
    return QDir::tempPath() + "/Vaskel/icons"_L1;
}

QString iconFile(const QString &path)
{
    return iconFolder() + u'/' + QString::number(qHash(QStringView(path), 0), 16) + ".png"_L1;
}

QVariantMap action(const QString &type, const QString &path)
{
    return {{u"type"_s, type}, {u"data"_s, path}, {u"plugin"_s, u"file"_s}};
}

QVariantList inertRow(const QString &title, const QString &subtitle)
{
    return {
        QVariantMap{{u"title"_s, title},
                    {u"subtitle"_s, subtitle},
                    {u"icon"_s, QString()},
                    {u"action"_s, QVariantMap{{u"type"_s, u"none"_s}, {u"plugin"_s, u"file"_s}}}}};
}

QVariantMap hit(const QString &path, const QString &icon)
{
    return {{u"title"_s, QFileInfo(path).fileName()},
            {u"subtitle"_s, QFileInfo(path).absolutePath()},
            {u"icon"_s, icon},
            {u"action"_s, action(u"openFile"_s, path)}};
}

/// Creates a file and adds it to the index.
QString addIndexed(const QString &relativePath)
{
    QString path = testhome::writeFile(relativePath, "text");
    fakePlatform().indexedPaths.append(path);
    return path;
}

QVariantList query(const QString &args)
{
    return FilePlugin().query(args);
}

QString onlyIcon(const QString &args)
{
    const QVariantList records = query(args);
    return records.size() == 1 ? records.first().toMap().value(u"icon"_s).toString()
                               : u"not one row"_s;
}

/// The text and the limit of the search for one query.
QList<std::pair<QString, unsigned>> searchFor(const QString &text)
{
    return {{text, 50}};
}

} // namespace

class tst_FilePlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void answersTheContract();

    void hintsAtBlankArguments_data();
    void hintsAtBlankArguments();
    void saysThatThereIsNoIndex_data();
    void saysThatThereIsNoIndex();
    void saysThatTheServiceDoesNotRun();
    void saysThatTheSearchFailed_data();
    void saysThatTheSearchFailed();
    void reportsThatTheIndexIsComplete();
    void saysThatNothingIsFound_data();
    void saysThatNothingIsFound();
    void listsTheHitsInTheOrderOfTheIndex();
    void listsAFolderLikeAFile();
    void listsAFileThatIsGone();
    void leavesOutAPathThatCannotBeRead();
    void listsNothingWhereNoPathCanBeRead();
    void listsAtMostFiftyHits();
    void listsNamesOfAnyKind_data();
    void listsNamesOfAnyKind();

    void fitsTheIconIntoTheSquare_data();
    void fitsTheIconIntoTheSquare();
    void usesTheIconThatALinkNames();
    void doesNotDrawAnIconAgain();
    void recreatesTheIconFolder();
    void listsWithoutIconsIfTheyCannotBeSaved();

    void opensAFile_data();
    void opensAFile();
    void refusesWhatItCannotOpen_data();
    void refusesWhatItCannotOpen();
    void textsAreTranslatedInItsContext();
};

void tst_FilePlugin::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
}

void tst_FilePlugin::answersTheContract()
{
    QObject parent;
    FilePlugin plugin(&parent);
    QCOMPARE(plugin.parent(), &parent);
    QCOMPARE(plugin.command(), u"file"_s);
    QCOMPARE(plugin.description(), u"File search (Everything)"_s);
    QVERIFY(plugin.aliases().isEmpty());
    QVERIFY(!plugin.hasView());
    plugin.setViewCommand(u"file"_s);
    QVERIFY(!plugin.createView());
    QVERIFY(fakePlatform().indexSearches.isEmpty());
}

void tst_FilePlugin::hintsAtBlankArguments_data()
{
    QTest::addColumn<QString>("args");
    QTest::addColumn<QString>("indexName");
    QTest::addColumn<QString>("subtitle");

    const QString everything = u"Powered by Everything for fast search"_s;
    QTest::newRow("nothing") << QString() << u"Everything"_s << everything;
    QTest::newRow("blanks") << u" \t "_s << u"Everything"_s << everything;
    QTest::newRow("another index")
        << QString() << u"Fake"_s << u"Powered by Fake for fast search"_s;
}

void tst_FilePlugin::hintsAtBlankArguments()
{
    QFETCH(const QString, args);
    QFETCH(const QString, indexName);
    QFETCH(const QString, subtitle);
    addIndexed(u"home/file"_s);
    fakePlatform().indexName = indexName;

    QCOMPARE(query(args), inertRow(u"Enter a filename to search"_s, subtitle));
    QVERIFY(fakePlatform().indexSearches.isEmpty());
}

void tst_FilePlugin::saysThatThereIsNoIndex_data()
{
    QTest::addColumn<QString>("args");

    QTest::newRow("nothing") << QString();
    QTest::newRow("blanks") << u"  "_s;
    QTest::newRow("text") << u" name"_s;
}

void tst_FilePlugin::saysThatThereIsNoIndex()
{
    QFETCH(const QString, args);
    fakePlatform().indexName.clear();

    QCOMPARE(query(args), inertRow(u"File search is only available on Windows"_s,
                                   u"Everything SDK only supports Windows"_s));
    QVERIFY(fakePlatform().indexSearches.isEmpty());
}

void tst_FilePlugin::saysThatTheServiceDoesNotRun()
{
    addIndexed(u"home/name"_s);
    fakePlatform().indexError = 2;

    QCOMPARE(query(u" name"_s), inertRow(u"Everything service is not running"_s,
                                         u"Please start Everything before using file search"_s));
    QCOMPARE(fakePlatform().indexSearches, searchFor(u" name"_s));
}

void tst_FilePlugin::saysThatTheSearchFailed_data()
{
    QTest::addColumn<unsigned>("error");
    QTest::addColumn<QString>("subtitle");

    QTest::newRow("0") << 0U << u"Error code: 0"_s;
    QTest::newRow("1") << 1U << u"Error code: 1"_s;
    QTest::newRow("3") << 3U << u"Error code: 3"_s;
    QTest::newRow("102") << 102U << u"Error code: 102"_s;
    QTest::newRow("the largest") << 4294967295U << u"Error code: 4294967295"_s;
}

void tst_FilePlugin::saysThatTheSearchFailed()
{
    QFETCH(const unsigned, error);
    QFETCH(const QString, subtitle);
    addIndexed(u"home/name"_s);
    fakePlatform().indexError = error;

    QCOMPARE(query(u"name"_s), inertRow(u"Search failed"_s, subtitle));
    QCOMPARE(fakePlatform().indexSearches, searchFor(u"name"_s));
}

void tst_FilePlugin::reportsThatTheIndexIsComplete()
{
    const QString path = addIndexed(u"home/name"_s);
    fakePlatform().indexError = 104;
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    FilePlugin plugin(&rowsChanged, nullptr);
    QCOMPARE(plugin.query(u"name"_s), inertRow(u"Search failed"_s, u"Error code: 104"_s));
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 0);

    fakePlatform().completeIndex();
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(changed.first().first().toString(), plugin.command());
    QCOMPARE(plugin.query(u"name"_s), QVariantList{hit(path, iconFile(path))});
}

void tst_FilePlugin::saysThatNothingIsFound_data()
{
    QTest::addColumn<QString>("args");

    QTest::newRow("text") << u"name"_s;
    QTest::newRow("blanks around") << u"  name "_s;
    QTest::newRow("an option") << u"--help"_s;
}

void tst_FilePlugin::saysThatNothingIsFound()
{
    QFETCH(const QString, args);

    QCOMPARE(query(args), inertRow(u"No files found"_s, args));
    QCOMPARE(fakePlatform().indexSearches, searchFor(args));
}

void tst_FilePlugin::listsTheHitsInTheOrderOfTheIndex()
{
    const QString zebra = addIndexed(u"home/zebra note.txt"_s);
    const QString apple = addIndexed(u"home/deep/apple note.pdf"_s);
    addIndexed(u"home/other"_s);

    QCOMPARE(query(u" note "_s),
             QVariantList({hit(zebra, iconFile(zebra)), hit(apple, iconFile(apple))}));
    QCOMPARE(fakePlatform().indexSearches, searchFor(u" note "_s));
}

void tst_FilePlugin::listsAFolderLikeAFile()
{
    addIndexed(u"home/folder/file"_s);
    const QString folder = testhome::path() + "/home/folder"_L1;
    fakePlatform().indexedPaths = QStringList(folder);
    QCOMPARE(query(u"folder"_s), QVariantList{hit(folder, iconFile(folder))});
}

void tst_FilePlugin::listsAFileThatIsGone()
{
    const QString path = addIndexed(u"home/gone.txt"_s);
    QVERIFY(QFile::remove(path));
    QCOMPARE(query(u"gone"_s), QVariantList{hit(path, QString())});
}

void tst_FilePlugin::leavesOutAPathThatCannotBeRead()
{
    const QString first = addIndexed(u"home/note 1"_s);
    fakePlatform().indexedPaths.append(QString());
    const QString last = addIndexed(u"home/note 2"_s);

    QCOMPARE(query(u"note"_s),
             QVariantList({hit(first, iconFile(first)), hit(last, iconFile(last))}));
    QCOMPARE(fakePlatform().indexSearches, searchFor(u"note"_s));
}

void tst_FilePlugin::listsNothingWhereNoPathCanBeRead()
{
    fakePlatform().indexedPaths = QStringList(QString());
    QVERIFY(query(u"note"_s).isEmpty());
    QCOMPARE(fakePlatform().indexSearches, searchFor(u"note"_s));
}

void tst_FilePlugin::listsAtMostFiftyHits()
{
    for (int index = 0; index < 60; ++index) {
        fakePlatform().indexedPaths.append(u"/nowhere/note %1"_s.arg(index));
    }
    fakePlatform().indexedPaths[7].clear();

    const QVariantList records = query(u"note"_s);
    QCOMPARE(records.size(), 49);
    QCOMPARE(records.last().toMap().value(u"title"_s).toString(), u"note 49"_s);
}

void tst_FilePlugin::listsNamesOfAnyKind_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("line feed") << u"first\nsecond"_s;
    QTest::newRow("255 bytes") << QString(255, u'x');
    QTest::newRow("Chinese") << u"文件"_s;
    QTest::newRow("backslash") << u"back\\slash"_s;
    QTest::newRow("what addresses escape") << u"100% #1?"_s;
}

void tst_FilePlugin::listsNamesOfAnyKind()
{
    QFETCH(const QString, name);
    const QString path = addIndexed(u"home/"_s + name);

    const QVariantList records = query(name);
    QCOMPARE(records, QVariantList{hit(path, iconFile(path))});
    const OpenedFiles opened;
    QVERIFY(FilePlugin().execute(records.first().toMap().value(u"action"_s).toMap()));
    QCOMPARE(opened.paths, QStringList(path));
}

void tst_FilePlugin::fitsTheIconIntoTheSquare_data()
{
    QTest::addColumn<int>("size");

    QTest::newRow("as large as needed") << 32;
    QTest::newRow("smaller") << 16;
    QTest::newRow("larger") << 64;
}

void tst_FilePlugin::fitsTheIconIntoTheSquare()
{
    QFETCH(const int, size);
    useIconsOfSize(size);
    const QString path = addIndexed(u"home/note.txt"_s);

    QCOMPARE(onlyIcon(u"note"_s), iconFile(path));
    const QImage icon(iconFile(path), "PNG");
    QCOMPARE(icon.size(), QSize(32, 32));
    QCOMPARE(icon.pixel(16, 16), QColor(Qt::red).rgb());
}

// The catalogue uses the same icon file for the same path.
void tst_FilePlugin::usesTheIconThatALinkNames()
{
    const QString path = addIndexed(u"home/program.link"_s);
    QPixmap own(32, 32);
    own.fill(Qt::green);
    fakePlatform().linkIcons.insert(path, QIcon(own));

    QCOMPARE(onlyIcon(u"program"_s), iconFile(path));
    QCOMPARE(QImage(iconFile(path), "PNG").pixel(16, 16), QColor(Qt::green).rgb());
}

void tst_FilePlugin::doesNotDrawAnIconAgain()
{
    const QString path = addIndexed(u"home/note.txt"_s);
    testhome::writeFile(QDir(testhome::path()).relativeFilePath(iconFile(path)), "old icon");

    QCOMPARE(onlyIcon(u"note"_s), iconFile(path));
    QFile icon(iconFile(path));
    QVERIFY(icon.open(QIODevice::ReadOnly));
    QCOMPARE(icon.readAll(), QByteArray("old icon"));
}

void tst_FilePlugin::recreatesTheIconFolder()
{
    const QString path = addIndexed(u"home/note.txt"_s);
    FilePlugin plugin;
    QVERIFY(QDir(QDir::tempPath() + "/Vaskel"_L1).removeRecursively());
    QCOMPARE(plugin.query(u"note"_s), QVariantList{hit(path, iconFile(path))});
    QVERIFY(QFile::exists(iconFile(path)));
}

void tst_FilePlugin::listsWithoutIconsIfTheyCannotBeSaved()
{
    const QString path = addIndexed(u"home/note.txt"_s);
    testhome::writeFile(u"tmp/Vaskel/icons"_s, "in the way");
    // Otherwise the icons would be in the user's cache instead.
    fakePlatform().foreignFolders = {QStandardPaths::writableLocation(QStandardPaths::CacheLocation)
                                     + "/icons"_L1};
    QCOMPARE(query(u"note"_s), QVariantList{hit(path, QString())});
}

void tst_FilePlugin::opensAFile_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("plain") << u"/a/b.txt"_s;
    QTest::newRow("what addresses escape") << u"/a b/100% #1?.txt"_s;
}

void tst_FilePlugin::opensAFile()
{
    QFETCH(const QString, path);

    const OpenedFiles opened;
    QVERIFY(FilePlugin().execute(action(u"openFile"_s, path)));
    QCOMPARE(opened.paths, QStringList(path));
}

void tst_FilePlugin::refusesWhatItCannotOpen_data()
{
    QTest::addColumn<QVariantMap>("action");

    QTest::newRow("no keys") << QVariantMap();
    QTest::newRow("no type") << QVariantMap{{u"data"_s, u"/"_s}};
    QTest::newRow("no data") << QVariantMap{{u"type"_s, u"openFile"_s}};
    QTest::newRow("empty data") << action(u"openFile"_s, QString());
    for (const QString &type : {u"openFolder"_s, u"none"_s, u"openfile"_s, u"OpenFile"_s, u""_s}) {
        QTest::addRow("type \"%s\"", qPrintable(type)) << action(type, u"/"_s);
    }
}

void tst_FilePlugin::refusesWhatItCannotOpen()
{
    QFETCH(const QVariantMap, action);

    const OpenedFiles opened;
    QVERIFY(!FilePlugin().execute(action));
    QVERIFY(opened.paths.isEmpty());
}

void tst_FilePlugin::textsAreTranslatedInItsContext()
{
    FileTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    FilePlugin plugin;
    QCOMPARE(plugin.description(), u"<File search (Everything)>"_s);
    QCOMPARE(plugin.query(QString()),
             inertRow(u"<Enter a filename to search>"_s, u"<Powered by Fake for fast search>"_s));
    QCOMPARE(plugin.query(u"x"_s), inertRow(u"<No files found>"_s, u"x"_s));
    fakePlatform().indexError = 7;
    QCOMPARE(plugin.query(u"x"_s), inertRow(u"<Search failed>"_s, u"<Error code: >7"_s));
    fakePlatform().indexError = 2;
    QCOMPARE(plugin.query(u"x"_s),
             inertRow(u"<Everything service is not running>"_s,
                      u"<Please start Everything before using file search>"_s));
    fakePlatform().indexName.clear();
    QCOMPARE(plugin.query(u"x"_s), inertRow(u"<File search is only available on Windows>"_s,
                                            u"<Everything SDK only supports Windows>"_s));
}

VASKEL_TEST(tst_FilePlugin, QApplication)
#include "tst_FilePlugin.moc"
