// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppLauncher.h"

#include "launcher/LauncherTest.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QMetaMethod>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace launchertest;

namespace {

/// JSON, with apostrophes instead of quotation marks.
QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

const QByteArray threePins =
    json("[{'iconPath':'','name':'Editor','path':'/menu/Editor.link'},"
         "{'iconPath':'/icons/图.png','name':'计算器 \\'2\\'','path':'calc'},"
         "{'iconPath':'/icons/1.png','name':'','path':'C:\\\\Tools\\\\tool.exe'}]");

QString pinsFile()
{
    return testhome::path() + "/data/tst_AppLauncherPins/pins.json"_L1;
}

void writePins(const QByteArray &content)
{
    testhome::writeFile(u"data/tst_AppLauncherPins/pins.json"_s, content);
}

QByteArray storedPins()
{
    QFile file(pinsFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

QStringList pinnedPaths(const AppLauncher &launcher)
{
    return column(launcher.pinnedApps(), u"path"_s);
}

QByteArray defaultPins()
{
    return json("[{'iconPath':'','name':'Calculator','path':'calc'},"
                "{'iconPath':'','name':'Task Manager','path':'taskmgr'}]");
}

/// Random bytes, the same in every run.
QByteArray noise(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator generator(1);
    for (char &byte : bytes) {
        byte = char(generator.bounded(256));
    }
    return bytes;
}

} // namespace

class tst_AppLauncherPins : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanupTestCase() { fakePlatform() = FakePlatform(); }

    void pinsTheDefaultsWithoutAFile();
    void startWithoutAFileIsTheFirst();
    void looksUpTheIconsOfTheDefaults();
    void replacesAFileThatIsNoArray_data();
    void replacesAFileThatIsNoArray();
    void replacesAFileThatIsCutShort();
    void keepsAnEmptyArrayAsItIs();
    void readsThePins_data();
    void readsThePins();
    void writesOnePinInOneLine();
    void writesTextAsItIs();
    void readsBackWhatItWrote();
    void appendsAPin();
    void looksUpTheIconOnlyWhenNoneIsGiven();
    void refusesASecondPinOfAPath();
    void refusesAnEmptyPath();
    void tellsPathsApartByCase();
    void removesAPinAndKeepsTheOrder();
    void removesTheFirstOfTwoEqualPins();
    void leavesTheFileAloneForAnUnknownPath();
    void doesNotBringTheDefaultsBack();
    void writesBeforeItEmits();
    void overwritesAnEditByHand();
    void keepsAPinWhoseTargetIsGone();
    void keepsThePinInMemoryWhenItCannotBeSaved();
    void keepsTheRemovalInMemoryWhenItCannotBeSaved();
    void createsTheFolderAtEachWrite();
    void closesTheFolderToOthers();
    void usesAFolderThatCannotBeClosed();
    void takesAPipeForAMissingFile();
    void publishesThePropertyAndTheMethods();
};

void tst_AppLauncherPins::init()
{
    reset();
    using platform::BuiltinProgram;
    fakePlatform().builtinPrograms = {
        {int(BuiltinProgram::Calculator), {u"calc"_s, u"A calculator"_s, u"calc.exe"_s}},
        {int(BuiltinProgram::TaskManager), {u"taskmgr"_s, u"Tasks"_s, u"taskmgr.exe"_s}},
    };
}

void tst_AppLauncherPins::pinsTheDefaultsWithoutAFile()
{
    const AppLauncher launcher;
    const QVariantList expected = {
        QVariantMap{{u"name"_s, u"Calculator"_s}, {u"path"_s, u"calc"_s}, {u"icon"_s, QString()}},
        QVariantMap{
            {u"name"_s, u"Task Manager"_s}, {u"path"_s, u"taskmgr"_s}, {u"icon"_s, QString()}},
    };
    QCOMPARE(launcher.pinnedApps(), expected);
    QCOMPARE(storedPins(), defaultPins());
}

void tst_AppLauncherPins::startWithoutAFileIsTheFirst()
{
    QVERIFY(AppLauncher().isFirstStart());
    QVERIFY(!AppLauncher().isFirstStart());
}

void tst_AppLauncherPins::looksUpTheIconsOfTheDefaults()
{
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::red);
    fakePlatform().shellPixmaps.insert(u"calc"_s, pixmap);

    const AppLauncher launcher;
    const QStringList icons = column(launcher.pinnedApps(), u"icon"_s);
    QVERIFY(QFile::exists(icons.first()));
    QCOMPARE(icons.last(), QString());
    QVERIFY(fakePlatform().shellPixmapCalls.contains(u"taskmgr"_s));
}

void tst_AppLauncherPins::replacesAFileThatIsNoArray_data()
{
    QTest::addColumn<QByteArray>("content");

    constexpr qsizetype tenMegabytes = 10 * 1024 * 1024;
    QTest::newRow("empty file") << QByteArray("");
    QTest::newRow("blanks") << QByteArray(" \n\t ");
    QTest::newRow("empty object") << QByteArray("{}");
    QTest::newRow("object with pins") << json("{'pins':[{'path':'x'}]}");
    QTest::newRow("string") << json("'pins'");
    QTest::newRow("number") << QByteArray("1");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("words") << QByteArray("not a pins file");
    QTest::newRow("text behind the array") << QByteArray("[] []");
    QTest::newRow("comma at the end") << json("[{'path':'x'},]");
    QTest::newRow("invalid UTF-8") << QByteArray("[{\"path\":\"\xff\xfe\"}]");
    QTest::newRow("zero bytes") << QByteArray(100, '\0');
    QTest::newRow("10 MB of noise") << noise(tenMegabytes);
    QTest::newRow("10 MB of brackets") << QByteArray(tenMegabytes, '[');
    QTest::newRow("10 MB string without an end")
        << QByteArray("[\"" + QByteArray(tenMegabytes, 'x'));
    QTest::newRow("noise behind a good beginning")
        << QByteArray(threePins.chopped(1) + ',' + noise(tenMegabytes));
}

void tst_AppLauncherPins::replacesAFileThatIsNoArray()
{
    QFETCH(QByteArray, content);
    writePins(content);

    const AppLauncher launcher;
    QCOMPARE(pinnedPaths(launcher), QStringList({u"calc"_s, u"taskmgr"_s}));
    QCOMPARE(storedPins(), defaultPins());
}

void tst_AppLauncherPins::replacesAFileThatIsCutShort()
{
    for (qsizetype size = 0; size < threePins.size(); ++size) {
        writePins(threePins.left(size));
        const AppLauncher launcher;
        QCOMPARE(pinnedPaths(launcher), QStringList({u"calc"_s, u"taskmgr"_s}));
        QCOMPARE(storedPins(), defaultPins());
    }
}

void tst_AppLauncherPins::keepsAnEmptyArrayAsItIs()
{
    writePins("[ ]\n");
    const AppLauncher launcher;
    QVERIFY(launcher.pinnedApps().isEmpty());
    QCOMPARE(storedPins(), QByteArray("[ ]\n"));
}

void tst_AppLauncherPins::readsThePins_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("pins");

    QTest::newRow("one pin") << json("[{'iconPath':'i','name':'n','path':'p'}]")
                             << QStringList(u"n|p|i"_s);
    QTest::newRow("other order, blanks and members")
        << QByteArray("[ {\n\"path\": \"p\", \"more\": 1, \"name\": \"n\"\n} ]\n")
        << QStringList(u"n|p|"_s);
    QTest::newRow("missing members")
        << json("[{'name':'n'},{'path':'p'},{}]") << QStringList({u"n||"_s, u"|p|"_s, u"||"_s});
    QTest::newRow("elements that are no objects")
        << json("[1,'p',null,[],true,{'path':'p'}]")
        << QStringList({u"||"_s, u"||"_s, u"||"_s, u"||"_s, u"||"_s, u"|p|"_s});
    QTest::newRow("members of the wrong type")
        << json("[{'iconPath':null,'name':3,'path':['p']}]") << QStringList(u"||"_s);
    QTest::newRow("duplicates") << json("[{'path':'p','name':'1'},{'path':'p','name':'2'}]")
                                << QStringList({u"1|p|"_s, u"2|p|"_s});
    QTest::newRow("icon that is not there") << json("[{'path':'p','iconPath':'/no/such/icon.png'}]")
                                            << QStringList(u"|p|/no/such/icon.png"_s);
    QTest::newRow("escapes") << json("[{'path':'\\/a\\u8ba1','name':'\\n'}]")
                             << QStringList(u"\n|/a计|"_s);
}

void tst_AppLauncherPins::readsThePins()
{
    QFETCH(QByteArray, content);
    writePins(content);

    const AppLauncher launcher;
    QStringList pins;
    const QVariantList records = launcher.pinnedApps();
    for (const QVariant &record : records) {
        const QVariantMap pin = record.toMap();
        pins.append(pin.value(u"name"_s).toString() + u'|' + pin.value(u"path"_s).toString() + u'|'
                    + pin.value(u"icon"_s).toString());
    }
    QTEST(pins, "pins");
    QCOMPARE(storedPins(), content);
    QCOMPARE(launcher.isPinned(QString()), pinnedPaths(launcher).contains(QString()));
}

void tst_AppLauncherPins::writesOnePinInOneLine()
{
    writePins("[]");
    AppLauncher launcher;
    QVERIFY(launcher.pinApp(u"calc"_s, u"Calculator"_s, {}));
    QCOMPARE(storedPins(),
             QByteArray("[{\"iconPath\":\"\",\"name\":\"Calculator\",\"path\":\"calc\"}]"));
}

void tst_AppLauncherPins::writesTextAsItIs()
{
    writePins("[]");
    AppLauncher launcher;
    QVERIFY(launcher.pinApp(u"/menu/Editor.link"_s, u"Editor"_s, {}));
    QVERIFY(launcher.pinApp(u"calc"_s, u"计算器 \"2\""_s, u"/icons/图.png"_s));
    QVERIFY(launcher.pinApp(u"C:\\Tools\\tool.exe"_s, {}, u"/icons/1.png"_s));
    QCOMPARE(storedPins(), threePins);
}

void tst_AppLauncherPins::readsBackWhatItWrote()
{
    writePins("[]");
    AppLauncher first;
    for (const auto &path : {u"b"_s, u"计算器 \u2028"_s, u"a"_s, u"\"\\/\n\t\x1f"_s, u"😀"_s}) {
        QVERIFY(first.pinApp(path, path + "n"_L1, path + "i"_L1));
    }
    QCOMPARE(first.pinnedApps().size(), 5);
    QCOMPARE(AppLauncher().pinnedApps(), first.pinnedApps());
}

void tst_AppLauncherPins::appendsAPin()
{
    AppLauncher launcher;
    const QSignalSpy changes(&launcher, &AppLauncher::pinsChanged);
    QVERIFY(!launcher.isPinned(u"x"_s));

    QVERIFY(launcher.pinApp(u"x"_s, u"X"_s, u"/icons/x.png"_s));
    QVERIFY(launcher.isPinned(u"x"_s));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(
        launcher.pinnedApps().last().toMap(),
        QVariantMap({{u"name"_s, u"X"_s}, {u"path"_s, u"x"_s}, {u"icon"_s, u"/icons/x.png"_s}}));
    QCOMPARE(pinnedPaths(launcher), QStringList({u"calc"_s, u"taskmgr"_s, u"x"_s}));
}

void tst_AppLauncherPins::looksUpTheIconOnlyWhenNoneIsGiven()
{
    AppLauncher launcher;
    QVERIFY(launcher.pinApp(u"given"_s, u"X"_s, u"/icons/x.png"_s));
    QVERIFY(launcher.pinApp(u"sought"_s, u"Y"_s, {}));
    QVERIFY(!fakePlatform().shellPixmapCalls.contains(u"given"_s));
    QVERIFY(fakePlatform().shellPixmapCalls.contains(u"sought"_s));
}

void tst_AppLauncherPins::refusesASecondPinOfAPath()
{
    AppLauncher launcher;
    const QVariantList pins = launcher.pinnedApps();
    const QSignalSpy changes(&launcher, &AppLauncher::pinsChanged);
    writePins("untouched");

    QVERIFY(!launcher.pinApp(u"calc"_s, u"Other name"_s, u"/icons/other.png"_s));
    QCOMPARE(launcher.pinnedApps(), pins);
    QCOMPARE(changes.size(), 0);
    QCOMPARE(storedPins(), QByteArray("untouched"));
}

void tst_AppLauncherPins::refusesAnEmptyPath()
{
    AppLauncher launcher;
    const QSignalSpy changes(&launcher, &AppLauncher::pinsChanged);
    writePins("untouched");

    QVERIFY(!launcher.pinApp({}, u"Name"_s, u"/icons/x.png"_s));
    QVERIFY(!launcher.isPinned({}));
    QCOMPARE(launcher.pinnedApps().size(), 2);
    QCOMPARE(changes.size(), 0);
    QCOMPARE(storedPins(), QByteArray("untouched"));
}

void tst_AppLauncherPins::tellsPathsApartByCase()
{
    AppLauncher launcher;
    QVERIFY(!launcher.isPinned(u"Calc"_s));
    QVERIFY(launcher.pinApp(u"Calc"_s, u"Calculator"_s, {}));
    QCOMPARE(pinnedPaths(launcher), QStringList({u"calc"_s, u"taskmgr"_s, u"Calc"_s}));
    QVERIFY(!launcher.unpinApp(u"CALC"_s));
}

void tst_AppLauncherPins::removesAPinAndKeepsTheOrder()
{
    writePins(json("[{'path':'a'},{'path':'b'},{'path':'c'}]"));
    AppLauncher launcher;
    const QSignalSpy changes(&launcher, &AppLauncher::pinsChanged);

    QVERIFY(launcher.unpinApp(u"b"_s));
    QVERIFY(!launcher.isPinned(u"b"_s));
    QCOMPARE(pinnedPaths(launcher), QStringList({u"a"_s, u"c"_s}));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(storedPins(), json("[{'iconPath':'','name':'','path':'a'},"
                                "{'iconPath':'','name':'','path':'c'}]"));
}

void tst_AppLauncherPins::removesTheFirstOfTwoEqualPins()
{
    writePins(json("[{'path':'a','name':'1'},{'path':'b'},{'path':'a','name':'2'}]"));
    AppLauncher launcher;
    QVERIFY(launcher.unpinApp(u"a"_s));
    QCOMPARE(column(launcher.pinnedApps(), u"name"_s), QStringList({QString(), u"2"_s}));
    QVERIFY(launcher.isPinned(u"a"_s));
}

void tst_AppLauncherPins::leavesTheFileAloneForAnUnknownPath()
{
    AppLauncher launcher;
    const QSignalSpy changes(&launcher, &AppLauncher::pinsChanged);
    writePins("untouched");

    QVERIFY(!launcher.unpinApp(u"unknown"_s));
    QVERIFY(!launcher.unpinApp({}));
    QCOMPARE(changes.size(), 0);
    QCOMPARE(storedPins(), QByteArray("untouched"));
}

void tst_AppLauncherPins::doesNotBringTheDefaultsBack()
{
    AppLauncher launcher;
    QVERIFY(launcher.unpinApp(u"calc"_s));
    QVERIFY(launcher.unpinApp(u"taskmgr"_s));
    QCOMPARE(storedPins(), QByteArray("[]"));
    QVERIFY(AppLauncher().pinnedApps().isEmpty());
}

void tst_AppLauncherPins::writesBeforeItEmits()
{
    AppLauncher launcher;
    QList<QByteArray> stored;
    connect(&launcher, &AppLauncher::pinsChanged, this, [&stored] { stored.append(storedPins()); });

    launcher.unpinApp(u"calc"_s);
    launcher.unpinApp(u"taskmgr"_s);
    launcher.pinApp(u"x"_s, u"X"_s, u"i"_s);
    QCOMPARE(stored,
             QList<QByteArray>({json("[{'iconPath':'','name':'Task Manager','path':'taskmgr'}]"),
                                "[]", json("[{'iconPath':'i','name':'X','path':'x'}]")}));
}

void tst_AppLauncherPins::overwritesAnEditByHand()
{
    AppLauncher launcher;
    writePins(json("[{'path':'by hand'}]"));
    QVERIFY(!launcher.isPinned(u"by hand"_s));
    QVERIFY(launcher.unpinApp(u"taskmgr"_s));
    QCOMPARE(storedPins(), json("[{'iconPath':'','name':'Calculator','path':'calc'}]"));
}

void tst_AppLauncherPins::keepsAPinWhoseTargetIsGone()
{
    const QString path = testhome::writeFile(u"bin/tool"_s, "#!/bin/sh\n");
    AppLauncher launcher;
    QVERIFY(launcher.pinApp(path, u"Tool"_s, {}));
    QVERIFY(QFile::remove(path));

    AppLauncher next;
    QVERIFY(next.isPinned(path));
    QVERIFY(!next.launch(path));
    QVERIFY(next.isPinned(path));
}

void tst_AppLauncherPins::keepsThePinInMemoryWhenItCannotBeSaved()
{
    // A folder in place of the file prevents writing, even for root.
    QVERIFY(QDir().mkpath(pinsFile() + "/folder"_L1));
    AppLauncher launcher;
    QCOMPARE(pinnedPaths(launcher), QStringList({u"calc"_s, u"taskmgr"_s}));
    const QSignalSpy changes(&launcher, &AppLauncher::pinsChanged);

    QVERIFY(launcher.pinApp(u"x"_s, u"X"_s, {}));
    QVERIFY(launcher.isPinned(u"x"_s));
    QCOMPARE(changes.size(), 1);
    QVERIFY(QFileInfo(pinsFile()).isDir());
}

void tst_AppLauncherPins::keepsTheRemovalInMemoryWhenItCannotBeSaved()
{
    AppLauncher launcher;
    const QSignalSpy changes(&launcher, &AppLauncher::pinsChanged);
    QVERIFY(QFile::remove(pinsFile()));
    QVERIFY(QDir().mkpath(pinsFile()));

    QVERIFY(launcher.unpinApp(u"calc"_s));
    QVERIFY(!launcher.isPinned(u"calc"_s));
    QCOMPARE(changes.size(), 1);
}

void tst_AppLauncherPins::createsTheFolderAtEachWrite()
{
    AppLauncher launcher;
    QVERIFY(QDir(QFileInfo(pinsFile()).path()).removeRecursively());
    QVERIFY(launcher.unpinApp(u"taskmgr"_s));
    QCOMPARE(storedPins(), json("[{'iconPath':'','name':'Calculator','path':'calc'}]"));
}

void tst_AppLauncherPins::closesTheFolderToOthers()
{
    AppLauncher launcher;
    QVERIFY(fakePlatform().privateFolders.contains(QFileInfo(pinsFile()).path()));
}

void tst_AppLauncherPins::usesAFolderThatCannotBeClosed()
{
    const QString folder = QFileInfo(pinsFile()).path();
    fakePlatform().foreignFolders.append(folder);
    const QString warning = u"Other users may be able to enter \"%1\""_s.arg(folder);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    AppLauncher launcher;
    QVERIFY(QFile::exists(pinsFile()));
}

void tst_AppLauncherPins::takesAPipeForAMissingFile()
{
    writePins("[]");
    fakePlatform().irregularFiles.append(pinsFile());
    QCOMPARE(AppLauncher().pinnedApps().size(), 2);
}

void tst_AppLauncherPins::publishesThePropertyAndTheMethods()
{
    AppLauncher launcher;
    const QMetaObject &meta = AppLauncher::staticMetaObject;
    const QMetaProperty property = meta.property(meta.indexOfProperty("pinnedApps"));
    QVERIFY(!property.isWritable());
    QCOMPARE(property.notifySignal().methodSignature(), QByteArray("pinsChanged()"));
    QCOMPARE(property.read(&launcher).toList(), launcher.pinnedApps());

    QList<QByteArray> methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Method) {
            methods.append(meta.method(i).methodSignature());
        }
    }
    QCOMPARE(methods, QList<QByteArray>({"search(QString)", "launch(QString)",
                                         "pinApp(QString,QString,QString)", "unpinApp(QString)",
                                         "isPinned(QString)"}));
}

VASKEL_TEST(tst_AppLauncherPins, QApplication)
#include "tst_AppLauncherPins.moc"
