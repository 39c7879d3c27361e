// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/DefaultPrograms.h"

#include "platform/linux/GlibPointer.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <gio/gdesktopappinfo.h>

using namespace Qt::StringLiterals;

class tst_DefaultPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void readsTheListsInTheirOrder();
    void readsEachEntryOfAList();
    void takesOnlyTheTypeItself();
    void leavesOutWhatCannotStart_data();
    void leavesOutWhatCannotStart();
    void survivesDamagedLists_data();
    void survivesDamagedLists();
    void readsTheAssociationsOfPrograms();
    void findsAnInstalledProgram();
    void agreesWithGio();
};

namespace {

QString installed(const QString &relativePath, const QByteArray &lines = {})
{
    return testhome::writeFile(relativePath, "[Desktop Entry]\nType=Application\nName=Any\n"
                                             "Exec=true\n"
                                                 + lines + '\n');
}

void setDefault(const QString &list, const QByteArray &ids)
{
    testhome::writeFile(list, "[Default Applications]\ntext/plain=" + ids + '\n');
}

QStringList defaults()
{
    return platform::defaultPrograms("text/plain");
}

} // namespace

void tst_DefaultPrograms::init()
{
    testhome::reset();
    qputenv("XDG_CONFIG_DIRS", testhome::path().toUtf8() + "/etc");
    qputenv("XDG_CURRENT_DESKTOP", "Ours:Base");
}

void tst_DefaultPrograms::readsTheListsInTheirOrder()
{
    const QStringList lists{u"config/ours-mimeapps.list"_s,
                            u"config/base-mimeapps.list"_s,
                            u"config/mimeapps.list"_s,
                            u"etc/ours-mimeapps.list"_s,
                            u"etc/mimeapps.list"_s,
                            u"data/applications/ours-mimeapps.list"_s,
                            u"data/applications/mimeapps.list"_s,
                            u"system/applications/ours-mimeapps.list"_s,
                            u"system/applications/base-mimeapps.list"_s,
                            u"system/applications/mimeapps.list"_s};
    QStringList expected;
    for (qsizetype index = 0; index < lists.size(); ++index) {
        const QByteArray id = "program-" + QByteArray::number(index) + ".desktop";
        expected += installed("system/applications/"_L1 + QString::fromUtf8(id));
        setDefault(lists.at(index), id);
    }
    setDefault(u"config/other-mimeapps.list"_s, "program-5.desktop");
    QCOMPARE(defaults(), expected);
}

void tst_DefaultPrograms::readsEachEntryOfAList()
{
    const QString first = installed(u"system/applications/first.desktop"_s);
    const QString second = installed(u"data/applications/second.desktop"_s);
    setDefault(u"config/mimeapps.list"_s, "second.desktop;missing.desktop;;first.desktop;");
    QCOMPARE(defaults(), (QStringList{second, first}));
}

void tst_DefaultPrograms::takesOnlyTheTypeItself()
{
    installed(u"data/applications/any.desktop"_s);
    testhome::writeFile(u"config/mimeapps.list"_s, "[Added Associations]\n"
                                                   "text/plain=any.desktop\n"
                                                   "[Default Applications]\n"
                                                   "text/html=any.desktop\n");
    QCOMPARE(defaults(), QStringList());
}

void tst_DefaultPrograms::leavesOutWhatCannotStart_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<bool>("isThere");
    QTest::newRow("in no menu: there") << QByteArray("NoDisplay=true") << true;
    QTest::newRow("in another desktop's menu: there") << QByteArray("OnlyShowIn=Other;") << true;
    QTest::newRow("hidden: not there") << QByteArray("Hidden=true") << false;
    QTest::newRow("TryExec missing: not there") << QByteArray("TryExec=no-such-program") << false;
    QTest::newRow("program missing: not there") << QByteArray("Exec=no-such-program") << false;
    QTest::newRow("broken: not there") << QByteArray("nonsense") << false;
}

void tst_DefaultPrograms::leavesOutWhatCannotStart()
{
    QFETCH(QByteArray, lines);
    QFETCH(bool, isThere);
    const QString path = installed(u"data/applications/any.desktop"_s, lines);
    setDefault(u"config/mimeapps.list"_s, "any.desktop");
    QCOMPARE(defaults(), isThere ? QStringList{path} : QStringList());
}

void tst_DefaultPrograms::survivesDamagedLists_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("nonsense") << QByteArray("nonsense");
    QTest::newRow("zeros") << QByteArray(1000, '\0');
    QTest::newRow("no value") << QByteArray("[Default Applications]\ntext/plain\n");
    QTest::newRow("empty value") << QByteArray("[Default Applications]\ntext/plain=\n");
    QTest::newRow("no text") << QByteArray("[Default Applications]\ntext/plain=\xff\xfe;\n");
    QTest::newRow("a way out") << QByteArray(
        "[Default Applications]\ntext/plain=../x.desktop;/;.;-\n");
}

void tst_DefaultPrograms::survivesDamagedLists()
{
    QFETCH(QByteArray, content);
    installed(u"data/x-y.desktop"_s);
    testhome::writeFile(u"config/mimeapps.list"_s, content);
    QCOMPARE(defaults(), QStringList());
}

void tst_DefaultPrograms::readsTheAssociationsOfPrograms()
{
    const QString users = installed(u"data/applications/users.desktop"_s);
    const QString systems = installed(u"system/applications/systems.desktop"_s);
    testhome::writeFile(u"data/applications/mimeinfo.cache"_s,
                        "[MIME Cache]\ntext/plain=users.desktop;gone.desktop;\n");
    testhome::writeFile(u"system/applications/mimeinfo.cache"_s,
                        "[MIME Cache]\ntext/html=users.desktop;\ntext/plain=systems.desktop;\n");
    QCOMPARE(platform::associatedPrograms("text/plain"), (QStringList{users, systems}));
    QCOMPARE(defaults(), QStringList());
}

void tst_DefaultPrograms::findsAnInstalledProgram()
{
    QCOMPARE(platform::installedProgram(u"a-b.desktop"_s), QString());
    const QString systems = installed(u"system/applications/a/b.desktop"_s);
    QCOMPARE(platform::installedProgram(u"a-b.desktop"_s), systems);
    const QString users = installed(u"data/applications/a-b.desktop"_s);
    QCOMPARE(platform::installedProgram(u"a-b.desktop"_s), users);
    installed(u"data/applications/a-b.desktop"_s, "Hidden=true");
    QCOMPARE(platform::installedProgram(u"a-b.desktop"_s), QString());
}

void tst_DefaultPrograms::agreesWithGio()
{
    installed(u"system/applications/systems.desktop"_s);
    installed(u"data/applications/users.desktop"_s);
    setDefault(u"system/applications/mimeapps.list"_s, "systems.desktop");
    setDefault(u"config/mimeapps.list"_s, "gone.desktop;users.desktop;systems.desktop");
    const auto defaultOfGio = [] {
        const platform::ObjectPointer<GAppInfo> program(
            g_app_info_get_default_for_type("text/plain", FALSE));
        return program ? QFile::decodeName(
                   g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(program.get())))
                       : QString();
    };
    // GIO watches the folders in a thread of its own, so it sees the new files after a moment.
    QTRY_VERIFY(!defaultOfGio().isEmpty());
    QTRY_COMPARE(defaults().value(0), defaultOfGio());
}

VASKEL_TEST(tst_DefaultPrograms, QCoreApplication)
#include "tst_DefaultPrograms.moc"
