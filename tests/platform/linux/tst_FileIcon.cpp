// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileIcon.h"

#include "platform/linux/IconTheme.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

/// Runs on a display without a desktop, so that no desktop helps out with an icon theme.
class tst_FileIcon : public QObject
{
    Q_OBJECT

public:
    static int main(int argc, char *argv[]);

private Q_SLOTS:
    void choosesAThemeForOtherFilesToo();
    void showsTheIconOfTheEntry_data();
    void showsTheIconOfTheEntry();
    void takesASuffixInCapitals();
    void givesNothingForOtherFiles_data();
    void givesNothingForOtherFiles();
    void theShellHasNoFurtherIcons();
    void prefersTheRichestTheme_data();
    void prefersTheRichestTheme();
};

namespace {

QByteArray png(const QColor &color)
{
    QImage image(32, 32, QImage::Format_ARGB32);
    image.fill(color);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

void installTheme(const QString &folder, const QList<std::pair<QString, QColor>> &icons)
{
    testhome::writeFile(folder + "/index.theme"_L1,
                        "[Icon Theme]\nName=Any\nComment=Any\nDirectories=32x32/apps\n\n"
                        "[32x32/apps]\nSize=32\nType=Fixed\n");
    for (const auto &[name, color] : icons) {
        testhome::writeFile(folder + "/32x32/apps/"_L1 + name, png(color));
    }
}

// The search paths are those that exist when the application object is built.
void installIcons()
{
    installTheme(u"system/icons/hicolor"_s, {{u"own.png"_s, Qt::red}});
    installTheme(u"system/icons/Adwaita"_s, {{u"application-x-executable.png"_s, Qt::gray},
                                             {u"utilities-terminal.png"_s, Qt::blue},
                                             {u"camera-photo.png"_s, Qt::green},
                                             {u"own.png"_s, Qt::black}});
    testhome::writeFile(u"system/pixmaps/loose.png"_s, png(Qt::yellow));
    testhome::writeFile(u"data/pixmaps/users.png"_s, png(Qt::white));
    testhome::writeFile(u"a folder/of its own.png"_s, png(Qt::cyan));
    testhome::writeFile(u"a folder/of its own"_s, "no picture");
    testhome::writeFile(u"drawn.svg"_s, "<svg xmlns='http://www.w3.org/2000/svg' width='9' "
                                        "height='9'><rect width='9' height='9' fill='#ff00ff'/>"
                                        "</svg>");
    testhome::writeFile(u"broken.png"_s, "\x89PNG nonsense");
}

QString entryPath(const QByteArray &lines)
{
    return testhome::writeFile(u"data/applications/a.desktop"_s,
                               "[Desktop Entry]\nType=Application\nName=A\nExec=true\n" + lines);
}

QColor colorOf(const QIcon &icon)
{
    const QImage image = icon.pixmap(QSize(32, 32)).toImage();
    return image.isNull() ? QColor() : image.pixelColor(image.rect().center());
}

} // namespace

// The first case, since the theme is chosen once in a process.
void tst_FileIcon::choosesAThemeForOtherFilesToo()
{
    QVERIFY(platform::linkIcon(testhome::writeFile(u"note.txt"_s, "text")).isNull());
    QCOMPARE(colorOf(QIcon::fromTheme(u"utilities-terminal"_s)), QColor(Qt::blue));
}

void tst_FileIcon::showsTheIconOfTheEntry_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QColor>("color");
    const QByteArray home = testhome::path().toUtf8();
    const auto row = [](const char *tag, const QByteArray &line, const QColor &color) {
        QTest::newRow(tag) << line << color;
    };
    row("own name", "Icon=own", Qt::red);
    row("own name with a suffix", "Icon=own.png", Qt::red);
    row("own name with another suffix", "Icon=own.svg", Qt::red);
    row("common name, from the fallback theme", "Icon=utilities-terminal", Qt::blue);
    row("unknown special form of a known name", "Icon=camera-photo-for-cats", Qt::green);
    row("file outside of the themes", "Icon=loose", Qt::yellow);
    row("file outside of the themes, with its suffix", "Icon=loose.png", Qt::yellow);
    row("file outside of the themes, the user's", "Icon=users", Qt::white);
    row("file by path", "Icon=" + home + "/a folder/of its own.png", Qt::cyan);
    row("drawing by path", "Icon=" + home + "/drawn.svg", Qt::magenta);
    row("unknown name", "Icon=nobody-knows", Qt::gray);
    row("missing file", "Icon=/no/such/file.png", Qt::gray);
    row("broken file", "Icon=" + home + "/broken.png", Qt::gray);
    row("folder", "Icon=" + home, Qt::gray);
    row("empty name", "Icon=", Qt::gray);
    row("no icon", "Comment=None", Qt::gray);
    row("not listed", "Icon=own\nNoDisplay=true", Qt::red);
}

void tst_FileIcon::showsTheIconOfTheEntry()
{
    QFETCH(QByteArray, line);
    QTEST(colorOf(platform::linkIcon(entryPath(line + '\n'))), "color");
}

void tst_FileIcon::takesASuffixInCapitals()
{
    const QByteArray entry = "[Desktop Entry]\nType=Application\nName=A\nExec=true\nIcon=own\n";
    const QString path = testhome::writeFile(u"data/applications/A.DESKTOP"_s, entry);
    QCOMPARE(colorOf(platform::linkIcon(path)), QColor(Qt::red));
}

void tst_FileIcon::givesNothingForOtherFiles_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("empty") << QString();
    QTest::newRow("command") << u"true"_s;
    QTest::newRow("program") << u"/bin/true"_s;
    QTest::newRow("address") << u"https://example.org/a.desktop"_s;
    QTest::newRow("folder") << testhome::path();
    QTest::newRow("missing entry") << u"/no/such/file.desktop"_s;
    QTest::newRow("broken entry") << testhome::writeFile(u"broken.desktop"_s, "Icon=own");
    QTest::newRow("entry without the suffix") << testhome::writeFile(
        u"desktop"_s, "[Desktop Entry]\nType=Application\nName=A\nExec=true\nIcon=own\n");
}

void tst_FileIcon::givesNothingForOtherFiles()
{
    QFETCH(QString, path);
    QVERIFY(platform::linkIcon(path).isNull());
}

void tst_FileIcon::theShellHasNoFurtherIcons()
{
    QVERIFY(platform::shellPixmap(u"xterm"_s).isNull());
    QVERIFY(platform::shellPixmap(testhome::path()).isNull());
}

void tst_FileIcon::prefersTheRichestTheme_data()
{
    QTest::addColumn<QStringList>("installed");
    QTest::addColumn<QString>("chosen");
    const QString adwaita = u"Adwaita"_s;
    QTest::newRow("none") << QStringList{} << QString();
    QTest::newRow("hicolor alone") << QStringList{u"hicolor"_s, u"locolor"_s} << QString();
    QTest::newRow("a well-known one") << QStringList{u"hicolor"_s, adwaita} << adwaita;
    QTest::newRow("two well-known ones") << QStringList{adwaita, u"breeze"_s} << u"breeze"_s;
    QTest::newRow("an unknown one") << QStringList{u"hicolor"_s, u"Zebra"_s} << u"Zebra"_s;
    QTest::newRow("an unknown and a well-known one") << QStringList{u"AAA"_s, adwaita} << adwaita;
    QTest::newRow("in the second folder") << QStringList{u"../more/Tango"_s} << u"Tango"_s;
}

void tst_FileIcon::prefersTheRichestTheme()
{
    QFETCH(QStringList, installed);
    const QString folder = u"themes %1/"_s.arg(QString::fromLatin1(QTest::currentDataTag()));
    testhome::writeFile(folder + "icons/breeze/index.theme"_L1,
                        installed.contains(u"breeze"_s) ? "" : "[Icon Theme]\nInherits=Adwaita\n");
    for (const QString &name : installed) {
        installTheme(folder + "icons/"_L1 + name, {});
    }
    const QString path = testhome::path() + u'/' + folder;
    QTEST(platform::richestIconTheme({u"/no/such/folder"_s, path + "icons"_L1, path + "more"_L1}),
          "chosen");
}

int tst_FileIcon::main(int argc, char *argv[])
{
    for (const char *name : {"XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "KDE_FULL_SESSION",
                             "GNOME_DESKTOP_SESSION_ID", "QT_QPA_PLATFORMTHEME"}) {
        qunsetenv(name);
    }
    installIcons();
    QGuiApplication application(argc, argv);
    tst_FileIcon test;
    return QTest::qExec(&test, argc, argv);
}

VASKEL_TEST_WITH_MAIN(tst_FileIcon, tst_FileIcon::main)
#include "tst_FileIcon.moc"
