// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppLauncher.h"

#include "launcher/LauncherTest.h"
#include "support/FileContent.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QFileIconProvider>
#include <QIconEngine>
#include <QImage>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;
using filecontent::contentOf;
using namespace launchertest;

namespace {

// An icon that exists but cannot be drawn, as if its file were damaged.
class DamagedIconEngine : public QIconEngine
{
public:
    void paint(QPainter *, const QRect &, QIcon::Mode, QIcon::State) override {}
    QPixmap pixmap(const QSize &, QIcon::Mode, QIcon::State) override { return {}; }
    QIconEngine *clone() const override { return new DamagedIconEngine; }
    bool isNull() override { return false; }
};

QPixmap plainPixmap(const QSize &size, Qt::GlobalColor color = Qt::red)
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    return pixmap;
}

QString iconFolder()
{
    return QDir::tempPath() + "/Vaskel/icons"_L1;
}

/// The folder of the icons while another user owns the usual one.
QString cacheFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + "/icons"_L1;
}

QString iconFile(const QString &path)
{
    return iconFolder() + u'/' + QString::number(qHash(QStringView(path), 0), 16) + ".png"_L1;
}

void writeIconFile(const QString &path, const QByteArray &content)
{
    testhome::writeFile(QDir(testhome::path()).relativeFilePath(iconFile(path)), content);
}

/// The "icon" of the only start-menu entry.
QString onlyIcon(const AppLauncher &launcher)
{
    const QStringList icons = column(startMenuRecords(launcher), u"icon"_s);
    return icons.size() == 1 ? icons.first() : u"not one entry"_s;
}

QRgb centreOf(const QString &filePath)
{
    const QImage image(filePath);
    return image.isNull() ? QRgb(0) : image.pixel(image.width() / 2, image.height() / 2);
}

} // namespace

class tst_AppLauncherIcons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }
    void cleanupTestCase() { fakePlatform() = FakePlatform(); }

    void takesTheFilesOwnIcon();
    void takesTheIconOfTheFileType();
    void asksTheShellForAFileThatCannotBeDrawn();
    void asksTheShellForAPathThatIsNoFile();
    void doesNotAskTheShellForAFileThatCanBeDrawn();
    void listsAnEntryWithoutAnIcon();
    void fitsAFileIconIntoTheSquare_data();
    void fitsAFileIconIntoTheSquare();
    void fitsAShellIconIntoTheSquare_data();
    void fitsAShellIconIntoTheSquare();
    void usesAStaleFile();
    void doesNotAskForTheIconAgain();
    void namesTheFileByTheUnchangedPath();
    void writesOnlyTheIcons();
    void usesTheCacheIfAFileIsInTheWay_data();
    void usesTheCacheIfAFileIsInTheWay();
    void usesTheCacheIfOthersCanReplaceTheFolder();
    void doesNotTouchAForeignFolder_data();
    void doesNotTouchAForeignFolder();
    void makesNoTemporaryFolder();
    void worksWithoutIconsIfTheCacheIsForeignToo();
    void givesNoIconWhenItCannotBeSaved();
};

void tst_AppLauncherIcons::takesTheFilesOwnIcon()
{
    const QString path = addFile(u"user/App.link"_s);
    fakePlatform().linkIcons.insert(path, QIcon(plainPixmap({32, 32}, Qt::green)));

    const QString icon = onlyIcon(AppLauncher());
    QCOMPARE(icon, iconFile(path));
    QCOMPARE(QImage(icon).size(), QSize(32, 32));
    QCOMPARE(centreOf(icon), QColor(Qt::green).rgb());
    QVERIFY(contentOf(icon).value().startsWith("\x89PNG"));
}

void tst_AppLauncherIcons::takesTheIconOfTheFileType()
{
    const QString path = addFile(u"user/App.link"_s);
    const QPixmap expected = QFileIconProvider().icon(QFileInfo(path)).pixmap(32, 32);
    QVERIFY(!expected.isNull());

    const QImage icon(onlyIcon(AppLauncher()));
    QCOMPARE(icon.convertToFormat(QImage::Format_ARGB32),
             expected.toImage().convertToFormat(QImage::Format_ARGB32));
}

void tst_AppLauncherIcons::asksTheShellForAFileThatCannotBeDrawn()
{
    const QString path = addFile(u"user/App.link"_s);
    fakePlatform().linkIcons.insert(path, QIcon(new DamagedIconEngine));
    fakePlatform().shellPixmaps.insert(path, plainPixmap({32, 32}, Qt::blue));

    const QString icon = onlyIcon(AppLauncher());
    QCOMPARE(icon, iconFile(path));
    QCOMPARE(centreOf(icon), QColor(Qt::blue).rgb());
}

void tst_AppLauncherIcons::asksTheShellForAPathThatIsNoFile()
{
    fakePlatform().builtinPrograms.insert(6, {u"control"_s, {}, u"ms-settings:"_s});
    fakePlatform().linkIcons.insert(u"ms-settings:"_s, QIcon(plainPixmap({32, 32}, Qt::green)));
    fakePlatform().shellPixmaps.insert(u"ms-settings:"_s, plainPixmap({32, 32}, Qt::blue));

    const QStringList icons = column(AppLauncher().search(QString()), u"icon"_s);
    QCOMPARE(icons.at(6), iconFile(u"ms-settings:"_s));
    QCOMPARE(centreOf(icons.at(6)), QColor(Qt::blue).rgb());
}

void tst_AppLauncherIcons::doesNotAskTheShellForAFileThatCanBeDrawn()
{
    const QString path = addFile(u"user/App.link"_s);
    const AppLauncher launcher;
    QVERIFY(!fakePlatform().shellPixmapCalls.contains(path));
}

void tst_AppLauncherIcons::listsAnEntryWithoutAnIcon()
{
    const QString path = addFile(u"user/App.link"_s);
    fakePlatform().linkIcons.insert(path, QIcon(new DamagedIconEngine));
    fakePlatform().builtinPrograms.insert(7, {u"https://example.org"_s, {}, u"https://e.org"_s});

    const AppLauncher launcher;
    QCOMPARE(onlyIcon(launcher), QString());
    const QVariantMap browser = launcher.search(QString()).at(7).toMap();
    QCOMPARE(browser.value(u"path"_s).toString(), u"https://example.org"_s);
    QCOMPARE(browser.value(u"icon"_s).toString(), QString());
    QVERIFY(QDir(iconFolder()).isEmpty());
}

void tst_AppLauncherIcons::fitsAFileIconIntoTheSquare_data()
{
    QTest::addColumn<QSize>("source");
    QTest::addColumn<QSize>("saved");

    QTest::newRow("as large as needed") << QSize(32, 32) << QSize(32, 32);
    QTest::newRow("larger") << QSize(256, 256) << QSize(32, 32);
    QTest::newRow("smaller") << QSize(16, 16) << QSize(32, 32);
    QTest::newRow("wide") << QSize(64, 16) << QSize(32, 8);
    QTest::newRow("wide and smaller") << QSize(16, 8) << QSize(32, 16);
    QTest::newRow("wide, right in one side") << QSize(32, 16) << QSize(32, 16);
    QTest::newRow("tall") << QSize(24, 96) << QSize(8, 32);
}

void tst_AppLauncherIcons::fitsAFileIconIntoTheSquare()
{
    QFETCH(QSize, source);
    fakePlatform().linkIcons.insert(addFile(u"user/App.link"_s), QIcon(plainPixmap(source)));
    QTEST(QImage(onlyIcon(AppLauncher())).size(), "saved");
}

void tst_AppLauncherIcons::fitsAShellIconIntoTheSquare_data()
{
    fitsAFileIconIntoTheSquare_data();
}

void tst_AppLauncherIcons::fitsAShellIconIntoTheSquare()
{
    QFETCH(QSize, source);
    AppLauncher launcher;
    fakePlatform().shellPixmaps.insert(u"command"_s, plainPixmap(source));

    QVERIFY(launcher.pinApp(u"command"_s, u"Command"_s, {}));
    QTEST(QImage(iconFile(u"command"_s)).size(), "saved");
}

void tst_AppLauncherIcons::usesAStaleFile()
{
    const QString path = addFile(u"user/App.link"_s);
    fakePlatform().linkIcons.insert(path, QIcon(plainPixmap({32, 32}, Qt::green)));
    writeIconFile(path, "old icon");
    writeIconFile(u"command"_s, "old icon of a command");

    AppLauncher launcher;
    QCOMPARE(onlyIcon(launcher), iconFile(path));
    QCOMPARE(contentOf(iconFile(path)), QByteArray("old icon"));

    QVERIFY(launcher.pinApp(u"command"_s, u"Command"_s, {}));
    QCOMPARE(column(launcher.pinnedApps(), u"icon"_s).last(), iconFile(u"command"_s));
    QVERIFY(!fakePlatform().shellPixmapCalls.contains(u"command"_s));
}

void tst_AppLauncherIcons::doesNotAskForTheIconAgain()
{
    const QString path = addFile(u"user/App.link"_s);
    fakePlatform().linkIcons.insert(path, QIcon(new DamagedIconEngine));
    fakePlatform().shellPixmaps.insert(path, plainPixmap({32, 32}));
    const QString first = onlyIcon(AppLauncher());
    fakePlatform().shellPixmapCalls.clear();

    QCOMPARE(onlyIcon(AppLauncher()), first);
    QVERIFY(!fakePlatform().shellPixmapCalls.contains(path));
}

void tst_AppLauncherIcons::namesTheFileByTheUnchangedPath()
{
    AppLauncher launcher;
    const QStringList paths = {u"tool"_s, u"Tool"_s, u"./tool"_s, u"tool/"_s, u"工具"_s};
    for (const QString &path : paths) {
        fakePlatform().shellPixmaps.insert(path, plainPixmap({32, 32}));
        QVERIFY(launcher.pinApp(path, path, {}));
        QCOMPARE(column(launcher.pinnedApps(), u"icon"_s).last(), iconFile(path));
        QVERIFY(QFile::exists(iconFile(path)));
    }
}

void tst_AppLauncherIcons::writesOnlyTheIcons()
{
    const QString path = addFile(u"user/App.link"_s);
    const AppLauncher launcher;
    QCOMPARE(QDir(iconFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QFileInfo(iconFile(path)).fileName()));
}

void tst_AppLauncherIcons::usesTheCacheIfAFileIsInTheWay_data()
{
    QTest::addColumn<QString>("fileInTheWay");

    QTest::newRow("instead of the folder") << u"tmp/Vaskel/icons"_s;
    QTest::newRow("instead of its parent") << u"tmp/Vaskel"_s;
}

void tst_AppLauncherIcons::usesTheCacheIfAFileIsInTheWay()
{
    QFETCH(QString, fileInTheWay);
    addFile(u"user/App.link"_s);
    const QString path = testhome::writeFile(fileInTheWay, "in the way");

    const QString icon = onlyIcon(AppLauncher());
    QVERIFY(icon.startsWith(cacheFolder() + u'/'));
    QCOMPARE(QImage(icon, "PNG").size(), QSize(32, 32));
    QCOMPARE(contentOf(path), QByteArray("in the way"));

    QVERIFY(QFile::remove(path));
    QVERIFY(onlyIcon(AppLauncher()).startsWith(iconFolder() + u'/'));
}

void tst_AppLauncherIcons::usesTheCacheIfOthersCanReplaceTheFolder()
{
    addFile(u"user/App.link"_s);
    fakePlatform().unprotectedFolders.append(iconFolder());
    QVERIFY(onlyIcon(AppLauncher()).startsWith(cacheFolder() + u'/'));
    QVERIFY(QDir(iconFolder()).isEmpty());
}

void tst_AppLauncherIcons::doesNotTouchAForeignFolder_data()
{
    QTest::addColumn<QString>("folder");

    QTest::newRow("the folder") << u"/Vaskel/icons"_s;
    QTest::newRow("its parent") << u"/Vaskel"_s;
}

void tst_AppLauncherIcons::doesNotTouchAForeignFolder()
{
    QFETCH(QString, folder);
    const QString path = addFile(u"user/App.link"_s);
    addFile(u"user/Tools/Other.link"_s);
    writeIconFile(path, "planted");
    fakePlatform().foreignFolders.append(QDir::tempPath() + folder);

    const QStringList icons = column(startMenuRecords(AppLauncher()), u"icon"_s);
    QCOMPARE(icons.size(), 2);
    for (const QString &icon : icons) {
        QVERIFY(icon.startsWith(cacheFolder() + u'/'));
        QCOMPARE(QImage(icon, "PNG").size(), QSize(32, 32));
    }
    QCOMPARE(QDir(iconFolder()).entryList(QDir::Files).size(), 1);
    QCOMPARE(contentOf(iconFile(path)), QByteArray("planted"));
}

void tst_AppLauncherIcons::makesNoTemporaryFolder()
{
    addFile(u"user/App.link"_s);
    QDir temporary(QDir::tempPath());
    QVERIFY(temporary.removeRecursively());
    QVERIFY(onlyIcon(AppLauncher()).startsWith(cacheFolder() + u'/'));
    QVERIFY(!temporary.exists());
}

void tst_AppLauncherIcons::worksWithoutIconsIfTheCacheIsForeignToo()
{
    addFile(u"user/App.link"_s);
    testhome::writeFile(u"tmp/Vaskel/icons/file"_s, {});
    fakePlatform().foreignFolders = {iconFolder(), cacheFolder()};
    QCOMPARE(onlyIcon(AppLauncher()), QString());
}

void tst_AppLauncherIcons::givesNoIconWhenItCannotBeSaved()
{
    AppLauncher launcher;
    QVERIFY(QDir(iconFolder()).removeRecursively());
    const QString file = addFile(u"user/App.link"_s);
    fakePlatform().shellPixmaps.insert(u"command"_s, plainPixmap({32, 32}));

    QVERIFY(launcher.pinApp(file, u"App"_s, {}));
    QVERIFY(launcher.pinApp(u"command"_s, u"Command"_s, {}));
    QCOMPARE(column(launcher.pinnedApps(), u"icon"_s).mid(2), QStringList({QString(), QString()}));

    QVERIFY(QFile::exists(onlyIcon(AppLauncher())));
}

VASKEL_TEST(tst_AppLauncherIcons, QApplication)
#include "tst_AppLauncherIcons.moc"
