// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StartMenu.h"

#include "platform/linux/GlibPointer.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>

#include <gio/gdesktopappinfo.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

class tst_StartMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void rootsKeepTheOrderOfTheSystem();
    void rootsHaveNoDuplicates();
    void listsWhatTheEntrySays_data();
    void listsWhatTheEntrySays();
    void agreesWithGio_data() { listsWhatTheEntrySays_data(); }
    void agreesWithGio();
    void takesTheNameInTheUsersLanguage_data();
    void takesTheNameInTheUsersLanguage();
    void decidesByTheRunningDesktop_data();
    void decidesByTheRunningDesktop();
    void overridesFilesOfLaterRoots_data();
    void overridesFilesOfLaterRoots();
    void doesNotOverrideOtherIds_data();
    void doesNotOverrideOtherIds();
    void endsTheSearchInCircularFolders();
    void doesNotListWhatIsNoRegularFile_data();
    void doesNotListWhatIsNoRegularFile();
    void doesNotListWhatCannotBeParsed_data();
    void doesNotListWhatCannotBeParsed();
    void readsFiveThousandEntries();
};

namespace {

const QByteArray plainEntry = "[Desktop Entry]\nType=Application\nName=Plain\nExec=true\n";

QString userRoot()
{
    return testhome::path() + "/data/applications"_L1;
}

QString systemRoot()
{
    return testhome::path() + "/system/applications"_L1;
}

QByteArray entryWith(const QByteArray &lines)
{
    return "[Desktop Entry]\nType=Application\nName=Plain\n" + lines + '\n';
}

std::optional<QString> listedName(const QString &root, const QString &path)
{
    const QHash<QString, QString> names = platform::startMenuNames(root, {path});
    return names.contains(path) ? std::optional(names.value(path)) : std::nullopt;
}

std::optional<QString> nameOf(const QByteArray &entry)
{
    return listedName(userRoot(), testhome::writeFile(u"data/applications/a.desktop"_s, entry));
}

// GIO substitutes a name for a missing one, and lists entries without a command.
QString nameByGio(const QString &path)
{
    const platform::ObjectPointer<GDesktopAppInfo> entry(
        g_desktop_app_info_new_from_filename(path.toUtf8().constData()));
    if (!entry || g_desktop_app_info_get_is_hidden(entry.get())) {
        return {};
    }
    GAppInfo *application = G_APP_INFO(entry.get());
    const platform::TextPointer name(g_desktop_app_info_get_string(entry.get(), "Name"));
    const bool isListed = name && *name.get() && g_app_info_get_commandline(application)
                          && g_app_info_should_show(application);
    return isListed ? QString::fromUtf8(g_app_info_get_display_name(application)) : QString();
}

void makeSymbolicLink(const QString &target, const QString &relativePath)
{
    const QString name = testhome::path() + u'/' + relativePath;
    QDir().mkpath(QFileInfo(name).path());
    QVERIFY(QFile::link(target, name));
}

} // namespace

void tst_StartMenu::init()
{
    testhome::reset();
    qputenv("XDG_DATA_HOME", testhome::path().toUtf8() + "/data");
    qputenv("XDG_DATA_DIRS", testhome::path().toUtf8() + "/system");
    qputenv("XDG_CURRENT_DESKTOP", "Ours:Base");
    qputenv("LANGUAGE", "");
}

void tst_StartMenu::rootsKeepTheOrderOfTheSystem()
{
    qputenv("XDG_DATA_DIRS", "/z/one:/a/two");
    const QStringList expected{userRoot(), u"/z/one/applications"_s, u"/a/two/applications"_s};
    QCOMPARE(platform::startMenuRoots(), expected);
}

void tst_StartMenu::rootsHaveNoDuplicates()
{
    const QByteArray home = testhome::path().toUtf8();
    qputenv("XDG_DATA_HOME", home + "/data/");
    qputenv("XDG_DATA_DIRS", "/one/:/two:/one::relative:" + home + "/data:/two//");
    const QStringList expected{userRoot(), u"/one/applications"_s, u"/two/applications"_s};
    QCOMPARE(platform::startMenuRoots(), expected);
}

void tst_StartMenu::listsWhatTheEntrySays_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QString>("name"); // null if the entry must not be listed

    const auto row = [](const char *tag, const QByteArray &lines, const QString &name) {
        QTest::newRow(tag) << entryWith(lines) << name;
    };
    const QString plain = u"Plain"_s;
    const QString unlisted;
    row("plain: listed", "Exec=true", plain);
    row("command line with field codes and quotes: listed", "Exec=true %U \"a b\" --x=\\\\$",
        plain);
    row("program by path: listed", "Exec=/bin/true", plain);
    row("in a terminal: listed", "Exec=true\nTerminal=true", plain);
    row("full name: listed by it", "Exec=true\nX-GNOME-FullName=Plain and Full",
        u"Plain and Full"_s);
    row("switches that are off: listed", "Exec=true\nHidden=false\nNoDisplay=false", plain);
    row("hidden: not listed", "Exec=true\nHidden=true", unlisted);
    row("no display: not listed", "Exec=true\nNoDisplay=true", unlisted);
    row("no display, the old way: not listed", "Exec=true\nNoDisplay=1", unlisted);
    row("TryExec installed: listed", "Exec=true\nTryExec=true", plain);
    row("TryExec empty: listed", "Exec=true\nTryExec=", plain);
    row("TryExec missing: not listed", "Exec=true\nTryExec=no-such-program", unlisted);
    row("TryExec a missing path: not listed", "Exec=true\nTryExec=/no/such/program", unlisted);
    row("TryExec not executable: not listed", "Exec=true\nTryExec=/etc/passwd", unlisted);
    row("TryExec a folder: not listed", "Exec=true\nTryExec=/etc", unlisted);
    row("program missing: not listed", "Exec=no-such-program %f", unlisted);
    row("quote not closed: not listed", "Exec=true \"", unlisted);
    row("blank command line: not listed", "Exec=\" \"", unlisted);
    row("no command line: not listed", "Comment=Nothing", unlisted);
    row("only for others: not listed", "Exec=true\nOnlyShowIn=Other;", unlisted);
    row("only for nobody: not listed", "Exec=true\nOnlyShowIn=", unlisted);
    row("only for ours: listed", "Exec=true\nOnlyShowIn=Other;Ours;", plain);
    row("not for ours: not listed", "Exec=true\nNotShowIn=Ours;", unlisted);
    row("not for others: listed", "Exec=true\nNotShowIn=Other;", plain);
    row("for ours, not for our base: listed", "Exec=true\nOnlyShowIn=Ours;\nNotShowIn=Base;",
        plain);
    row("for our base, not for ours: not listed", "Exec=true\nOnlyShowIn=Base;\nNotShowIn=Ours;",
        unlisted);

    QTest::newRow("no name: not listed")
        << QByteArray("[Desktop Entry]\nType=Application\nExec=true\n") << unlisted;
    QTest::newRow("empty name: not listed")
        << QByteArray("[Desktop Entry]\nType=Application\nName=\nExec=true\n") << unlisted;
    QTest::newRow("full name alone: not listed")
        << QByteArray("[Desktop Entry]\nType=Application\nX-GNOME-FullName=Full\nExec=true\n")
        << unlisted;
    QTest::newRow("link to a page: not listed")
        << QByteArray("[Desktop Entry]\nType=Link\nName=Page\nURL=https://example.org/\n")
        << unlisted;
    QTest::newRow("folder entry: not listed")
        << QByteArray("[Desktop Entry]\nType=Directory\nName=Folder\nExec=true\n") << unlisted;
    QTest::newRow("no type: not listed")
        << QByteArray("[Desktop Entry]\nName=Plain\nExec=true\n") << unlisted;
    QTest::newRow("another group first: not listed") << "[Other]\nA=b\n" + plainEntry << unlisted;
    QTest::newRow("a comment first: listed") << "# Ours\n\n" + plainEntry << plain;
    QTest::newRow("line ends of another system: listed")
        << QByteArray("[Desktop Entry]\r\nType=Application\r\nName=Plain\r\nExec=true\r\n")
        << plain;
}

void tst_StartMenu::listsWhatTheEntrySays()
{
    QFETCH(QByteArray, entry);
    QFETCH(QString, name);
    const std::optional<QString> found = nameOf(entry);
    QCOMPARE(found.has_value(), !name.isNull());
    QCOMPARE(found.value_or(QString()), name);
}

void tst_StartMenu::agreesWithGio()
{
    QFETCH(QByteArray, entry);
    const QString path = testhome::writeFile(u"data/applications/a.desktop"_s, entry);
    QCOMPARE(listedName(userRoot(), path).value_or(QString()), nameByGio(path));
}

void tst_StartMenu::takesTheNameInTheUsersLanguage_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QString>("name");
    QTest::newRow("no language: the plain name") << QByteArray() << u"Notes"_s;
    QTest::newRow("China: simplified") << QByteArray("zh_CN") << u"记事本"_s;
    QTest::newRow("China with a character set: simplified")
        << QByteArray("zh_CN.UTF-8") << u"记事本"_s;
    QTest::newRow("Taiwan: traditional") << QByteArray("zh_TW") << u"記事本"_s;
    QTest::newRow("Austria: German") << QByteArray("de_AT") << u"Notizen"_s;
    QTest::newRow("not translated: the plain name") << QByteArray("fr") << u"Notes"_s;
    QTest::newRow("not translated, then Chinese: simplified")
        << QByteArray("fr:zh_CN:de") << u"记事本"_s;
}

void tst_StartMenu::takesTheNameInTheUsersLanguage()
{
    QFETCH(QByteArray, language);
    qputenv("LANGUAGE", language);
    const QByteArray entry = "[Desktop Entry]\nType=Application\nExec=true\nName=Notes\n"
                             "Name[de]=Notizen\nName[zh_CN]=记事本\nName[zh_TW]=記事本\n";
    QTEST(nameOf(entry).value_or(QString()), "name");
}

void tst_StartMenu::decidesByTheRunningDesktop_data()
{
    QTest::addColumn<QByteArray>("desktop");
    QTest::addColumn<QByteArray>("condition");
    QTest::addColumn<bool>("isListed");
    const QByteArray none;
    QTest::newRow("no desktop, only for one") << none << QByteArray("OnlyShowIn=GNOME;") << false;
    QTest::newRow("no desktop, not for one") << none << QByteArray("NotShowIn=GNOME;") << true;
    QTest::newRow("no desktop, only for nobody") << none << QByteArray("OnlyShowIn=;") << false;
    QTest::newRow("other case") << QByteArray("gnome") << QByteArray("OnlyShowIn=GNOME;") << false;
    QTest::newRow("second name") << QByteArray("ubuntu:GNOME") << QByteArray("OnlyShowIn=GNOME;")
                                 << true;
    QTest::newRow("second name, not for it")
        << QByteArray("ubuntu:GNOME") << QByteArray("NotShowIn=KDE;GNOME;") << false;
}

void tst_StartMenu::decidesByTheRunningDesktop()
{
    QFETCH(QByteArray, desktop);
    QFETCH(QByteArray, condition);
    if (desktop.isEmpty()) {
        qunsetenv("XDG_CURRENT_DESKTOP");
    } else {
        qputenv("XDG_CURRENT_DESKTOP", desktop);
    }
    const QString path =
        testhome::writeFile(u"data/applications/a.desktop"_s, entryWith("Exec=true\n" + condition));
    QProcess lister;
    lister.start(QStringLiteral(LISTER), {userRoot(), path});
    QVERIFY(lister.waitForFinished());
    QTEST(!lister.readAll().isEmpty(), "isListed");
}

void tst_StartMenu::overridesFilesOfLaterRoots_data()
{
    QTest::addColumn<QString>("earlier");
    QTest::addColumn<QByteArray>("content"); // a symbolic link to itself if empty
    QTest::addColumn<QString>("later");

    const QString file = u"foo-bar.desktop"_s;
    const QString inFolder = u"foo/bar.desktop"_s;
    QTest::newRow("the same path") << file << plainEntry << file;
    QTest::newRow("the same path in a folder") << inFolder << plainEntry << inFolder;
    QTest::newRow("a folder for the dash") << inFolder << plainEntry << file;
    QTest::newRow("a dash for the folder") << file << plainEntry << inFolder;
    QTest::newRow("folders for some of the dashes")
        << u"a-b/c-d/e.desktop"_s << plainEntry << u"a-b-c-d-e.desktop"_s;
    QTest::newRow("hidden") << file << entryWith("Exec=true\nHidden=true") << file;
    QTest::newRow("not for this desktop") << file << entryWith("Exec=true\nOnlyShowIn=X;") << file;
    QTest::newRow("broken") << file << QByteArray("nonsense") << file;
    QTest::newRow("a cyclic symbolic link") << file << QByteArray() << file;
}

void tst_StartMenu::overridesFilesOfLaterRoots()
{
    QFETCH(QString, earlier);
    QFETCH(QByteArray, content);
    QFETCH(QString, later);
    const QString path = testhome::writeFile("system/applications/"_L1 + later, plainEntry);
    QCOMPARE(listedName(systemRoot(), path), u"Plain"_s);

    if (content.isEmpty()) {
        makeSymbolicLink(earlier, "data/applications/"_L1 + earlier);
    } else {
        testhome::writeFile("data/applications/"_L1 + earlier, content);
    }
    QCOMPARE(listedName(systemRoot(), path), std::nullopt);
}

void tst_StartMenu::doesNotOverrideOtherIds_data()
{
    QTest::addColumn<QString>("root");
    QTest::addColumn<QString>("other");
    QTest::addColumn<QString>("listed");
    const QString later = u"system/applications/"_s;
    const QString earlier = u"data/applications/"_s;
    QTest::newRow("another case") << systemRoot() << earlier + "FOO.desktop"_L1
                                  << later + "foo.desktop"_L1;
    QTest::newRow("a folder") << systemRoot() << earlier + "foo.desktop/x"_L1
                              << later + "foo.desktop"_L1;
    QTest::newRow("a part") << systemRoot() << earlier + "bar.desktop"_L1
                            << later + "foo-bar.desktop"_L1;
    QTest::newRow("above the root")
        << systemRoot() << u"data/bar.desktop"_s << later + "..-bar.desktop"_L1;
    QTest::newRow("no name before the dash")
        << systemRoot() << earlier + "bar.desktop"_L1 << later + "-bar.desktop"_L1;
    QTest::newRow("a later root") << userRoot() << later + "foo.desktop"_L1
                                  << earlier + "foo.desktop"_L1;
    QTest::newRow("the same root")
        << userRoot() << earlier + "foo/bar.desktop"_L1 << earlier + "foo-bar.desktop"_L1;
}

void tst_StartMenu::doesNotOverrideOtherIds()
{
    QFETCH(QString, root);
    QFETCH(QString, other);
    QFETCH(QString, listed);
    testhome::writeFile(u"data/applications/any.desktop"_s, plainEntry);
    testhome::writeFile(other, plainEntry);
    QCOMPARE(listedName(root, testhome::writeFile(listed, plainEntry)), u"Plain"_s);
}

void tst_StartMenu::endsTheSearchInCircularFolders()
{
    makeSymbolicLink(u"."_s, u"data/applications/a"_s);
    const QString file = u"system/applications/"_s + u"a-"_s.repeated(100) + "a.desktop"_L1;
    QVERIFY(listedName(systemRoot(), testhome::writeFile(file, plainEntry)));
}

void tst_StartMenu::doesNotListWhatIsNoRegularFile_data()
{
    QTest::addColumn<QString>("kind");
    for (const auto &kind : {u"missing"_s, u"dangling"_s, u"circle"_s, u"folder"_s, u"pipe"_s,
                             u"endless"_s, u"huge"_s}) {
        QTest::newRow(qPrintable(kind)) << kind;
    }
}

void tst_StartMenu::doesNotListWhatIsNoRegularFile()
{
    QFETCH(QString, kind);
    const QString relativePath = u"data/applications/a.desktop"_s;
    const QString path = testhome::path() + u'/' + relativePath;
    if (kind == "dangling"_L1) {
        makeSymbolicLink(u"/no/such/file"_s, relativePath);
    } else if (kind == "circle"_L1) {
        makeSymbolicLink(u"b.desktop"_s, relativePath);
        makeSymbolicLink(u"a.desktop"_s, u"data/applications/b.desktop"_s);
    } else if (kind == "folder"_L1) {
        testhome::writeFile(relativePath + "/x"_L1, {});
    } else if (kind == "pipe"_L1) {
        QDir().mkpath(userRoot());
        QCOMPARE(mkfifo(path.toUtf8().constData(), S_IRWXU), 0);
    } else if (kind == "endless"_L1) {
        makeSymbolicLink(u"/dev/zero"_s, relativePath);
    } else if (kind == "huge"_L1) {
        testhome::writeFile(relativePath, plainEntry + QByteArray(10'000'000, '#'));
    }
    QCOMPARE(listedName(userRoot(), path), std::nullopt);
}

void tst_StartMenu::doesNotListWhatCannotBeParsed_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("text") << QByteArray("Hello");
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("random bytes") << QByteArray::fromHex("7f454c4602010100fffe0d0a5b");
    QTest::newRow("a line that is none") << plainEntry + "nonsense\n";
    QTest::newRow("a group not closed") << QByteArray("[Desktop Entry\nType=Application\n");
    QTest::newRow("name in another encoding")
        << QByteArray("[Desktop Entry]\nType=Application\nName=Caf\xe9\nExec=true\n");
    QTest::newRow("zero inside of the type")
        << QByteArray(plainEntry).replace("Application", QByteArray("App\0lication", 12));
    for (qsizetype size = 0; size < plainEntry.size() - 1; ++size) {
        if (size < plainEntry.indexOf("Exec=tru")) {
            QTest::addRow("cut at byte %d", int(size)) << plainEntry.first(size);
        }
    }
}

void tst_StartMenu::doesNotListWhatCannotBeParsed()
{
    QFETCH(QByteArray, content);
    QCOMPARE(nameOf(content), std::nullopt);
}

void tst_StartMenu::readsFiveThousandEntries()
{
    constexpr int count = 5000;
    for (int number = 0; number < count; ++number) {
        testhome::writeFile(u"system/applications/app-%1.desktop"_s.arg(number),
                            "[Desktop Entry]\nType=Application\nExec=true\nName="
                                + QByteArray::number(number) + '\n');
    }
    QStringList paths;
    const QDir folder(systemRoot());
    for (const QFileInfo &file : folder.entryInfoList(QDir::Files)) {
        paths.append(file.absoluteFilePath());
    }
    QCOMPARE(platform::startMenuNames(systemRoot(), paths).size(), count);
}

VASKEL_TEST(tst_StartMenu, QCoreApplication)
#include "tst_StartMenu.moc"
