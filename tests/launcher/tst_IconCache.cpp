// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/IconCache.h"

#include "support/FakePlatform.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIconEngine>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

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

QString keyOf(const QString &path)
{
    return QString::number(qHash(QStringView(path), 0), 16);
}

/// Creates a file whose icon has this size.
QString addFile(const QSize &size)
{
    QString path = testhome::writeFile(u"menu/App.link"_s, {});
    fakePlatform().linkIcons.insert(path, QIcon(plainPixmap(size)));
    return path;
}

} // namespace

namespace {

/// Counts how often the icon is drawn.
class CountedIconEngine : public QIconEngine
{
public:
    explicit CountedIconEngine(int *count)
        : m_count(count)
    {
    }

    void paint(QPainter *, const QRect &, QIcon::Mode, QIcon::State) override {}
    QPixmap pixmap(const QSize &size, QIcon::Mode, QIcon::State) override
    {
        ++*m_count;
        return plainPixmap(size, Qt::green);
    }
    QIconEngine *clone() const override { return new CountedIconEngine(m_count); }

private:
    int *m_count;
};

} // namespace

class tst_IconCache : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanupTestCase() { fakePlatform() = FakePlatform(); }

    void namesTheFileByPrefixAndPath();
    void takesTheAbsolutePathOfAnEntry();
    void scalesUnlessToldNotTo_data();
    void scalesUnlessToldNotTo();
    void asksTheShellOnlyIfToldTo();
    void drawsTheIconOfTheFileType();
    void drawsAMissingFileUnlessTheShellIsAsked();
    void usesAStaleFile();
    void drawsAnIconOfSeveralFilesOnce();
    void goesOnWhereItWasCutShort();
    void asksOnlyTheFolderForListedFiles();
    void findsAFileThatIsNewerThanTheListing();
    void keepsTheFilesOfPrefixesApart();
    void returnsNothingWithoutAFolder();
    void savesAPixmapWholeOrNotAtAll();
};

void tst_IconCache::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
}

void tst_IconCache::namesTheFileByPrefixAndPath()
{
    const QString path = addFile({32, 32});
    const QString expected = iconFolder() + "/kind_"_L1 + keyOf(path) + ".png"_L1;
    QCOMPARE(IconCache(makeIconFolder(), {.prefix = u"kind_"_s}).iconFile(path), expected);
    QCOMPARE(QImage(expected, "PNG").size(), QSize(32, 32));
}

void tst_IconCache::takesTheAbsolutePathOfAnEntry()
{
    const QString path = addFile({32, 32});
    const QFileInfo entry(QDir(QFileInfo(path).path()), u"../menu/App.link"_s);
    QCOMPARE(IconCache(makeIconFolder()).iconFile(entry),
             iconFolder() + u'/' + keyOf(entry.absoluteFilePath()) + ".png"_L1);
}

void tst_IconCache::scalesUnlessToldNotTo_data()
{
    QTest::addColumn<bool>("isScaled");
    QTest::addColumn<QSize>("drawn");
    QTest::addColumn<QSize>("saved");

    QTest::newRow("scaled up") << true << QSize(16, 8) << QSize(32, 16);
    QTest::newRow("right already") << true << QSize(32, 32) << QSize(32, 32);
    QTest::newRow("left small") << false << QSize(16, 8) << QSize(16, 8);
    QTest::newRow("never larger") << false << QSize(64, 64) << QSize(32, 32);
}

void tst_IconCache::scalesUnlessToldNotTo()
{
    QFETCH(bool, isScaled);
    QFETCH(QSize, drawn);
    IconCache icons(makeIconFolder(), {.isScaled = isScaled});
    QTEST(QImage(icons.iconFile(addFile(drawn))).size(), "saved");
}

void tst_IconCache::asksTheShellOnlyIfToldTo()
{
    fakePlatform().shellPixmaps.insert(u"command"_s, plainPixmap({32, 32}, Qt::blue));

    IconCache(makeIconFolder()).iconFile(u"command"_s);
    QCOMPARE(fakePlatform().shellPixmapCalls, QStringList());

    QVERIFY(QDir(iconFolder()).removeRecursively());
    const QString icon = IconCache(makeIconFolder(), {.asksShell = true}).iconFile(u"command"_s);
    QCOMPARE(fakePlatform().shellPixmapCalls, QStringList(u"command"_s));
    QCOMPARE(QImage(icon).pixelColor(16, 16), QColor(Qt::blue));
}

void tst_IconCache::drawsTheIconOfTheFileType()
{
    const QString path = testhome::writeFile(u"files/a.pdf"_s, {});
    fakePlatform().fileTypeIcons.insert(path, QIcon(plainPixmap({32, 32}, Qt::green)));
    const QString icon = IconCache(makeIconFolder()).iconFile(path);
    QCOMPARE(QImage(icon).pixelColor(16, 16), QColor(Qt::green));
}

void tst_IconCache::drawsAMissingFileUnlessTheShellIsAsked()
{
    const QString path = testhome::path() + "/gone.link"_L1;
    fakePlatform().linkIcons.insert(path, QIcon(plainPixmap({32, 32})));

    QCOMPARE(IconCache(makeIconFolder(), {.asksShell = true}).iconFile(path), QString());
    const QString icon = IconCache(makeIconFolder()).iconFile(path);
    QCOMPARE(QImage(icon).pixelColor(16, 16), QColor(Qt::red));
}

void tst_IconCache::usesAStaleFile()
{
    const QString path = addFile({32, 32});
    const QString icon = IconCache(makeIconFolder()).iconFile(path);
    QVERIFY(plainPixmap({3, 3}).save(icon));
    QCOMPARE(IconCache(makeIconFolder()).iconFile(path), icon);
    QCOMPARE(QImage(icon).size(), QSize(3, 3));
}

void tst_IconCache::drawsAnIconOfSeveralFilesOnce()
{
    int count = 0;
    const QIcon icon(new CountedIconEngine(&count));
    IconCache icons(makeIconFolder());
    QSet<QString> files;
    for (int number = 0; number < 3; ++number) {
        const QString path = testhome::writeFile(u"menu/%1.link"_s.arg(number), {});
        fakePlatform().linkIcons.insert(path, icon);
        files.insert(icons.iconFile(path));
        QCOMPARE(icons.iconFile(path), iconFolder() + u'/' + keyOf(path) + ".png"_L1);
    }
    QCOMPARE(files.size(), 3);
    for (const QString &file : std::as_const(files)) {
        QCOMPARE(QImage(file).pixelColor(16, 16), QColor(Qt::green));
    }
    QCOMPARE(count, 1);
}

void tst_IconCache::goesOnWhereItWasCutShort()
{
    QStringList paths;
    for (int number = 0; number < 3; ++number) {
        paths.append(testhome::writeFile(u"menu/%1.link"_s.arg(number), {}));
        fakePlatform().linkIcons.insert(paths.last(), QIcon(plainPixmap({32, 32})));
    }
    {
        IconCache icons(makeIconFolder());
        icons.listFolder();
        for (int number = 0; number < 2; ++number) {
            // The file is complete before the next icon is drawn.
            QCOMPARE(QImage(icons.iconFile(paths.at(number))).size(), QSize(32, 32));
        }
    }
    fakePlatform().linkIconCalls.clear();
    IconCache icons(makeIconFolder());
    icons.listFolder();
    for (const QString &path : std::as_const(paths)) {
        QVERIFY(QFile::exists(icons.iconFile(path)));
    }
    QCOMPARE(fakePlatform().linkIconCalls, QStringList(paths.last()));
}

void tst_IconCache::asksOnlyTheFolderForListedFiles()
{
    const QString path = addFile({32, 32});
    const QString icon = IconCache(makeIconFolder()).iconFile(path);
    IconCache icons(makeIconFolder());
    icons.listFolder();
    QVERIFY(QFile::remove(icon));
    QCOMPARE(icons.iconFile(path), icon);
    QVERIFY(!QFile::exists(icon));
    QCOMPARE(fakePlatform().listedFolders, QStringList(iconFolder()));
}

void tst_IconCache::findsAFileThatIsNewerThanTheListing()
{
    const QString path = addFile({32, 32});
    IconCache icons(makeIconFolder());
    icons.listFolder();
    const QString icon = icons.iconFile(path);
    QCOMPARE(QImage(icon).size(), QSize(32, 32));
    fakePlatform().linkIcons.insert(path, QIcon(plainPixmap({32, 32}, Qt::blue)));
    QCOMPARE(icons.iconFile(path), icon);
    QCOMPARE(QImage(icon).pixelColor(16, 16), QColor(Qt::red));
}

void tst_IconCache::keepsTheFilesOfPrefixesApart()
{
    const QString path = addFile({16, 16});
    const QString scaled = IconCache(makeIconFolder()).iconFile(path);
    const QString drawn =
        IconCache(makeIconFolder(), {.prefix = u"kind_"_s, .isScaled = false}).iconFile(path);
    QCOMPARE(QImage(scaled).size(), QSize(32, 32));
    QCOMPARE(QImage(drawn).size(), QSize(16, 16));
}

void tst_IconCache::returnsNothingWithoutAFolder()
{
    const QString path = addFile({32, 32});
    QCOMPARE(IconCache(QString()).iconFile(path), QString());
    QCOMPARE(IconCache(QString(), {.asksShell = true}).iconFile(path), QString());
    QCOMPARE(fakePlatform().shellPixmapCalls, QStringList());
}

void tst_IconCache::savesAPixmapWholeOrNotAtAll()
{
    const QString folder = makeIconFolder();
    QCOMPARE(folder, iconFolder());
    QVERIFY(!saveIcon(QPixmap(), folder + "/null.png"_L1));
    QVERIFY(!saveIcon(plainPixmap({1, 1}), folder + "/nowhere/icon.png"_L1));
    QVERIFY(QDir(folder).isEmpty());

    const QString target = folder + "/icon.png"_L1;
    QVERIFY(saveIcon(plainPixmap({3, 2}), target));
    QCOMPARE(QImage(target, "PNG").size(), QSize(3, 2));
    QVERIFY(!saveIcon(plainPixmap({5, 5}), target));
    QCOMPARE(QImage(target, "PNG").size(), QSize(3, 2));
}

VASKEL_TEST(tst_IconCache, QApplication)
#include "tst_IconCache.moc"
