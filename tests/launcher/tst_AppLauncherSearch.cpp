// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppLauncher.h"

#include "launcher/LauncherTest.h"
#include "support/TestProgram.h"

#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;
using namespace launchertest;

namespace {

class NotepadTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *, const char *source, const char *, int) const override
    {
        return qstrcmp(source, "Notepad") == 0 ? u"记事本"_s : QString();
    }
};

} // namespace

class tst_AppLauncherSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanupTestCase() { fakePlatform() = FakePlatform(); }

    void returnsFourFields();
    void returnsAllForABlankQuery_data();
    void returnsAllForABlankQuery();
    void finds_data();
    void finds();
    void keepsTheOrderOfTheCatalogue();
    void returnsAnEntryWithSeveralMatchesOnce();
    void doesNotCutTheList();
    void findsATranslatedBuiltinByItsPinyin();
    void isInvokableByName();
};

void tst_AppLauncherSearch::init()
{
    reset();
    for (int program = 0; program < builtinCount; ++program) {
        fakePlatform().builtinPrograms.insert(program, {u"notepad%1"_s.arg(program), {}, {}});
    }
    // The files of a folder come before those of its subfolders, so the order is known.
    for (const auto &file :
         {u"user/7-Zip.link"_s, u"user/Adobe Photoshop.link"_s, u"user/Élan.link"_s,
          u"user/QQ音乐.link"_s, u"user/计算器.link"_s, u"user/记事本.link"_s,
          u"user/Vendor One/Reader.link"_s, u"common/Zip Vendor.link"_s}) {
        addFile(file);
    }
}

void tst_AppLauncherSearch::returnsFourFields()
{
    const QString source = userMenu() + "/Adobe Photoshop.link"_L1;
    const QVariantList records = AppLauncher().search(u"photoshop"_s);
    QCOMPARE(records.size(), 1);

    const QVariantMap record = records.first().toMap();
    QCOMPARE(record.keys(), QStringList({u"desc"_s, u"icon"_s, u"name"_s, u"path"_s}));
    QCOMPARE(record.value(u"name"_s).toString(), u"Adobe Photoshop"_s);
    QCOMPARE(record.value(u"path"_s).toString(), source);
    QCOMPARE(record.value(u"desc"_s).toString(), u"Start Menu"_s);
    QVERIFY(record.value(u"icon"_s).toString().startsWith(QDir::tempPath() + "/Vaskel/icons/"_L1));
}

void tst_AppLauncherSearch::returnsAllForABlankQuery_data()
{
    QTest::addColumn<QString>("query");

    QTest::newRow("null") << QString();
    QTest::newRow("empty") << u""_s;
    QTest::newRow("blank") << u" "_s;
    QTest::newRow("blanks of several kinds") << u" \t\n\u3000 "_s;
}

void tst_AppLauncherSearch::returnsAllForABlankQuery()
{
    QFETCH(QString, query);

    QCOMPARE(column(AppLauncher().search(query), u"name"_s),
             QStringList({u"Notepad"_s, u"Calculator"_s, u"Paint"_s, u"Command Prompt"_s,
                          u"File Explorer"_s, u"Task Manager"_s, u"Settings"_s, u"Browser"_s,
                          u"7-Zip"_s, u"Adobe Photoshop"_s, u"QQ音乐"_s, u"Élan"_s, u"计算器"_s,
                          u"记事本"_s, u"Reader"_s, u"Zip Vendor"_s}));
}

void tst_AppLauncherSearch::finds_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("names");

    const QStringList none;
    const QStringList notes(u"记事本"_s);
    const QStringList photoshop(u"Adobe Photoshop"_s);
    const QStringList calculator(u"计算器"_s);

    QTest::newRow("whole pinyin") << u"jishiben"_s << notes;
    QTest::newRow("initials") << u"jsb"_s << notes;
    QTest::newRow("pinyin from its middle") << u"shib"_s << notes;
    QTest::newRow("part of the Chinese name") << u"记事"_s << notes;
    QTest::newRow("initials of another name") << u"jsq"_s << calculator;
    QTest::newRow("across syllables") << u"suanq"_s << calculator;
    QTest::newRow("pinyin of another name") << u"jisuanqi"_s << calculator;
    QTest::newRow("from Latin into Chinese") << u"qqyin"_s << QStringList(u"QQ音乐"_s);
    QTest::newRow("Latin and initials") << u"qyl"_s << QStringList(u"QQ音乐"_s);
    QTest::newRow("homophones are not sought") << u"及事"_s << none;

    QTest::newRow("words joined, by the initials") << u"adobephotoshop"_s << photoshop;
    QTest::newRow("words apart, by the name") << u"adobe photoshop"_s << photoshop;
    QTest::newRow("blanks around") << u"  photoshop\t"_s << photoshop;
    QTest::newRow("capitals and blanks") << u" ADOBE Photo "_s << photoshop;
    QTest::newRow("inside a word") << u"toshop"_s << photoshop;
    QTest::newRow("words in another order") << u"photoshop adobe"_s << none;
    QTest::newRow("two blanks between the words") << u"adobe  photoshop"_s << none;
    QTest::newRow("letters that do not stand together") << u"adbe"_s << none;
    QTest::newRow("capitals with accents") << u"ÉLAN"_s << QStringList(u"Élan"_s);
    QTest::newRow("accents are not dropped") << u"elan"_s << none;

    QTest::newRow("digit in the name") << u"7-z"_s << QStringList(u"7-Zip"_s);
    QTest::newRow("digit that the initials lack") << u"7zip"_s << none;
    QTest::newRow("folder label") << u"vendor one"_s << QStringList(u"Reader"_s);
    QTest::newRow("weak match in a description first")
        << u"vendor"_s << QStringList({u"Reader"_s, u"Zip Vendor"_s});
    QTest::newRow("label of all start-menu entries")
        << u"start"_s
        << QStringList({u"7-Zip"_s, u"Adobe Photoshop"_s, u"QQ音乐"_s, u"Élan"_s, u"计算器"_s,
                        u"记事本"_s, u"Reader"_s, u"Zip Vendor"_s});
    QTest::newRow("path") << u"notepad3"_s << none;
    QTest::newRow("path of a start-menu entry") << u".link"_s << none;
    QTest::newRow("across name and description") << u"zipstart"_s << none;
    QTest::newRow("wildcards are letters") << u"*"_s << none;
    QTest::newRow("nothing") << u"no such name"_s << none;
}

void tst_AppLauncherSearch::finds()
{
    QFETCH(QString, query);
    QTEST(column(AppLauncher().search(query), u"name"_s), "names");
}

void tst_AppLauncherSearch::keepsTheOrderOfTheCatalogue()
{
    fakePlatform().builtinPrograms[7].description = u"Shows what a zip holds"_s;
    QCOMPARE(column(AppLauncher().search(u"zip"_s), u"name"_s),
             QStringList({u"Browser"_s, u"7-Zip"_s, u"Zip Vendor"_s}));
}

void tst_AppLauncherSearch::returnsAnEntryWithSeveralMatchesOnce()
{
    addFile(u"user/Echo/Echo.link"_s);
    QCOMPARE(AppLauncher().search(u"echo"_s).size(), 1);
}

void tst_AppLauncherSearch::doesNotCutTheList()
{
    for (int file = 0; file < 300; ++file) {
        addFile(u"user/Many/Many %1.link"_s.arg(file));
    }
    QCOMPARE(AppLauncher().search(u"many"_s).size(), 300);
}

void tst_AppLauncherSearch::findsATranslatedBuiltinByItsPinyin()
{
    fakePlatform().builtinPrograms[0].path = u"notepad"_s;
    NotepadTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const AppLauncher launcher;

    QVERIFY(launcher.search(u"notepad"_s).isEmpty());
    QVERIFY(column(launcher.search(u"jishiben"_s), u"path"_s).contains(u"notepad"_s));
}

void tst_AppLauncherSearch::isInvokableByName()
{
    AppLauncher launcher;
    QVariantList records;
    QVERIFY(QMetaObject::invokeMethod(&launcher, "search", Q_RETURN_ARG(QVariantList, records),
                                      Q_ARG(QString, u"jsb"_s)));
    QCOMPARE(column(records, u"name"_s), QStringList(u"记事本"_s));
}

VASKEL_TEST(tst_AppLauncherSearch, QApplication)
#include "tst_AppLauncherSearch.moc"
