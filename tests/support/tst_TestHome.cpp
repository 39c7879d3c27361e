// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestHome.h"

#include "support/TestProgram.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString themeInStore()
{
    return QSettings(u"Vaskel"_s, u"Vaskel"_s).value(u"theme"_s).toString();
}

bool isInside(const QString &folder)
{
    return folder == testhome::path() || folder.startsWith(testhome::path() + u'/');
}

} // namespace

class tst_TestHome : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void keepsTheProgramsFoldersInside_data();
    void keepsTheProgramsFoldersInside();
    void keepsEveryFolderOfTheUserInside_data();
    void keepsEveryFolderOfTheUserInside();
    void keepsTheSettingsStoreInside();
    void writesFilesWithTheirFolders();
    void resetEmptiesTheHome();
    void resetRemovesSymbolicLinks();
    void resetKeepsTheTargetOfASymbolicLink();
    void resetForgetsTheSettingsStore();
    void resetForgetsWhatALiveStoreHasNotWrittenYet();
    void resetForgetsAStoreOfTheSameSizeAndAge();
};

void tst_TestHome::init()
{
    testhome::reset();
}

// The folders that the program writes to on any system.
void tst_TestHome::keepsTheProgramsFoldersInside_data()
{
    QTest::addColumn<QStandardPaths::StandardLocation>("location");
    QTest::newRow("application data") << QStandardPaths::AppDataLocation;
    QTest::newRow("configuration") << QStandardPaths::GenericConfigLocation;
    QTest::newRow("applications") << QStandardPaths::ApplicationsLocation;
    QTest::newRow("cache") << QStandardPaths::GenericCacheLocation;
    QTest::newRow("temporary files") << QStandardPaths::TempLocation;
    QTest::newRow("documents") << QStandardPaths::DocumentsLocation;
}

void tst_TestHome::keepsTheProgramsFoldersInside()
{
    QFETCH(QStandardPaths::StandardLocation, location);
    const QString folder = QStandardPaths::writableLocation(location);
    QVERIFY2(isInside(folder), qPrintable(folder));
}

// The folders that it reads on a system with variables for them.
void tst_TestHome::keepsEveryFolderOfTheUserInside_data()
{
    keepsTheProgramsFoldersInside_data();
    QTest::newRow("home") << QStandardPaths::HomeLocation;
    QTest::newRow("run time") << QStandardPaths::RuntimeLocation;
}

void tst_TestHome::keepsEveryFolderOfTheUserInside()
{
    QFETCH(QStandardPaths::StandardLocation, location);
    const QStringList folders = QStandardPaths::standardLocations(location);
    QVERIFY(!folders.isEmpty());
    for (const QString &folder : folders) {
        QVERIFY2(isInside(folder), qPrintable(folder));
    }
}

void tst_TestHome::keepsTheSettingsStoreInside()
{
    const QSettings store(u"Vaskel"_s, u"Vaskel"_s);
    QCOMPARE(store.fileName(), testhome::path() + "/config/Vaskel/Vaskel.conf"_L1);
    const QSettings systemStore(QSettings::SystemScope, u"Vaskel"_s, u"Vaskel"_s);
    QVERIFY2(systemStore.fileName().startsWith(testhome::path()),
             qPrintable(systemStore.fileName()));
}

void tst_TestHome::writesFilesWithTheirFolders()
{
    const QString path = testhome::writeFile(u"data/one/two.txt"_s, "text");
    QCOMPARE(path, testhome::path() + "/data/one/two.txt"_L1);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("text"));
}

void tst_TestHome::resetEmptiesTheHome()
{
    const auto entries = [] {
        QStringList paths;
        QDirIterator all(testhome::path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        while (all.hasNext()) {
            paths.append(all.next());
        }
        paths.sort();
        return paths;
    };
    const QStringList fresh = entries();
    QVERIFY(fresh.contains(testhome::path() + "/system/applications"_L1));

    testhome::writeFile(u"data/one/two.txt"_s, "text");
    testhome::writeFile(u"system/applications/sub/.hidden"_s, "text");
    testhome::writeFile(u".hidden"_s, "text");
    testhome::writeFile(u"another/data/one.txt"_s, "text");
    QVERIFY(QDir(testhome::path() + "/cache"_L1).removeRecursively());
    testhome::writeFile(u"cache"_s, "a file in place of a folder");
    testhome::reset();
    QCOMPARE(entries(), fresh);
}

void tst_TestHome::resetRemovesSymbolicLinks()
{
    const QString link = testhome::path() + "/tmp/link"_L1;
    QVERIFY(QFile::link(testhome::path() + "/data"_L1, link));
    testhome::reset();
    QVERIFY(!QFileInfo(link).isSymLink());
}

void tst_TestHome::resetKeepsTheTargetOfASymbolicLink()
{
    const QTemporaryDir outside(testhome::path() + "-outside-XXXXXX"_L1);
    QFile file(outside.filePath(u"kept"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(QDir(testhome::path() + "/data"_L1).removeRecursively());
    QVERIFY(QFile::link(outside.path(), testhome::path() + "/data"_L1));
    testhome::reset();
    QVERIFY(file.exists());
    QVERIFY(!QFileInfo(testhome::path() + "/data"_L1).isSymLink());
}

void tst_TestHome::resetForgetsTheSettingsStore()
{
    QSettings(u"Vaskel"_s, u"Vaskel"_s).setValue(u"theme"_s, u"dark"_s);
    QCOMPARE(themeInStore(), u"dark"_s);
    testhome::reset();
    QCOMPARE(themeInStore(), QString());
}

void tst_TestHome::resetForgetsWhatALiveStoreHasNotWrittenYet()
{
    QSettings live(u"Vaskel"_s, u"Vaskel"_s);
    live.setValue(u"theme"_s, u"dark"_s);
    testhome::reset();
    QCOMPARE(live.value(u"theme"_s).toString(), QString());
    QCOMPARE(themeInStore(), QString());
}

// The file system's clock is too coarse to tell two quick writes apart.
void tst_TestHome::resetForgetsAStoreOfTheSameSizeAndAge()
{
    const QString fileName = u"config/Vaskel/Vaskel.conf"_s;
    const QDateTime age(QDate(2024, 1, 1), QTime(12, 0));
    for (const QString &theme : {u"dark0"_s, u"light"_s, u"third"_s}) {
        testhome::reset();
        QFile file(testhome::writeFile(fileName, "[General]\ntheme=" + theme.toLatin1() + '\n'));
        QVERIFY(file.open(QIODevice::Append));
        QVERIFY(file.setFileTime(age, QFileDevice::FileModificationTime));
        file.close();
        QCOMPARE(themeInStore(), theme);
    }
}

VASKEL_TEST(tst_TestHome, QCoreApplication)
#include "tst_TestHome.moc"
