// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/LinkIcons.h"

#include "platform/IconTheme.h"
#include "platform/linux/IconThemeFiles.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using iconthemefiles::colorOf;

/// Runs on a display without a desktop, so that no desktop helps out with an icon theme.
class tst_LinkIcons : public QObject
{
    Q_OBJECT

public:
    static int main(int argc, char *argv[]);

private Q_SLOTS:
    void showsTheIconOfTheEntry_data();
    void showsTheIconOfTheEntry();
    void takesASuffixInCapitals();
    void givesNothingForOtherFiles_data();
    void givesNothingForOtherFiles();
};

namespace {

const QByteArray themeFolder = "system/icons/hicolor/32x32/apps/";

// Below the home of the test.
const QByteArrayList pipes = {"pipe.png", "system/pixmaps/piped-loose.png",
                              themeFolder + "piped-vector.svg", themeFolder + "piped-image.png"};

QByteArray drawing(const QByteArray &content)
{
    return "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'>" + content + "</svg>";
}

void makePipes()
{
    for (const QByteArray &pipe : pipes) {
        const QString path = testhome::path() + u'/' + QString::fromLatin1(pipe);
        if (::mkfifo(QFile::encodeName(path).constData(), S_IRWXU) != 0) {
            qFatal("cannot make the pipe");
        }
    }
}

QString entryPath(const QByteArray &lines)
{
    return testhome::writeFile(u"data/applications/a.desktop"_s,
                               "[Desktop Entry]\nType=Application\nName=A\nExec=true\n" + lines);
}

} // namespace

void tst_LinkIcons::showsTheIconOfTheEntry_data()
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
    row("path out of the theme", "Icon=../../../loose", Qt::gray);
    row("pipe", "Icon=" + home + "/pipe.png", Qt::gray);
    row("symbolic link to a pipe", "Icon=" + home + "/link-to-pipe.svg", Qt::gray);
    row("endless device", "Icon=/dev/zero", Qt::gray);
    row("pipe outside of the themes", "Icon=piped-loose", Qt::gray);
    row("pipe in the theme", "Icon=piped-image", Qt::gray);
    row("pipe in the theme, by the name of a drawing", "Icon=piped-vector", Qt::gray);
    row("drawing in the theme", "Icon=vector", Qt::darkYellow);
    row("drawing in the theme that names a pipe", "Icon=naming-vector", Qt::gray);
    row("drawing that names a pipe, by the name of an image", "Icon=naming-image", Qt::gray);
    row("no icon", "Comment=None", Qt::gray);
    row("not listed", "Icon=own\nNoDisplay=true", Qt::red);
}

void tst_LinkIcons::showsTheIconOfTheEntry()
{
    QFETCH(QByteArray, line);
    QTEST(colorOf(platform::LinkIcons().icon(entryPath(line + '\n'))), "color");
}

void tst_LinkIcons::takesASuffixInCapitals()
{
    const QByteArray entry = "[Desktop Entry]\nType=Application\nName=A\nExec=true\nIcon=own\n";
    const QString path = testhome::writeFile(u"data/applications/A.DESKTOP"_s, entry);
    QCOMPARE(colorOf(platform::LinkIcons().icon(path)), QColor(Qt::red));
}

void tst_LinkIcons::givesNothingForOtherFiles_data()
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

void tst_LinkIcons::givesNothingForOtherFiles()
{
    QFETCH(QString, path);
    QVERIFY(platform::LinkIcons().icon(path).isNull());
}

int tst_LinkIcons::main(int argc, char *argv[])
{
    iconthemefiles::leaveTheDesktop();
    iconthemefiles::installIcons();
    const QString pipe = testhome::path() + "/pipe.png"_L1;
    makePipes();
    if (!QFile::link(pipe, testhome::path() + "/link-to-pipe.svg"_L1)) {
        qFatal("cannot make the link");
    }
    const QString folder = QString::fromLatin1(themeFolder);
    testhome::writeFile(folder + "vector.svg"_L1,
                        drawing("<rect width='9' height='9' fill='#808000'/>"));
    const QByteArray image = "<image width='9' height='9' href='" + pipe.toUtf8() + "'/>";
    const QByteArray red = "<rect width='9' height='9' fill='red'/>";
    for (const auto name : {"naming-vector.svg"_L1, "naming-image.png"_L1}) {
        testhome::writeFile(folder + name, drawing(image + red));
    }
    QGuiApplication application(argc, argv);
    platform::ensureIconTheme();
    tst_LinkIcons test;
    return QTest::qExec(&test, argc, argv);
}

VASKEL_TEST_WITH_MAIN(tst_LinkIcons, tst_LinkIcons::main)
#include "tst_LinkIcons.moc"
