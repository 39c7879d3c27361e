// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/IconTheme.h"

#include "platform/LinkIcons.h"
#include "platform/linux/IconThemeFiles.h"
#include "platform/linux/InstalledIconThemes.h"
#include "support/TestProgram.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using iconthemefiles::colorOf;
using iconthemefiles::installTheme;

/// Runs on a display without a desktop, so that no desktop helps out with an icon theme.
class tst_IconTheme : public QObject
{
    Q_OBJECT

public:
    static int main(int argc, char *argv[]);

private Q_SLOTS:
    void init();
    void askingForAnIconChoosesNoTheme();
    void choosesAThemeForOtherFilesToo();
    void findsIconsOutsideOfThemes();
    void showsTheTypeOfAFile_data();
    void showsTheTypeOfAFile();
    void prefersTheRichestTheme_data();
    void prefersTheRichestTheme();
};

void tst_IconTheme::init()
{
    QIcon::setFallbackThemeName({});
    QIcon::setFallbackSearchPaths({});
    QIcon::setThemeSearchPaths(QIcon::themeSearchPaths()); // forgets the themes that it has read
}

void tst_IconTheme::askingForAnIconChoosesNoTheme()
{
    const QString theme = QIcon::fallbackThemeName();
    const QStringList folders = QIcon::fallbackSearchPaths();
    QVERIFY(platform::LinkIcons().icon(testhome::writeFile(u"note.txt"_s, "text")).isNull());
    platform::LinkIcons().icon(
        testhome::writeFile(u"data/applications/a.desktop"_s,
                            "[Desktop Entry]\nType=Application\nName=A\nExec=true\nIcon=own\n"));
    QCOMPARE(QIcon::fallbackThemeName(), theme);
    QCOMPARE(QIcon::fallbackSearchPaths(), folders);
    QVERIFY(QIcon::fromTheme(u"utilities-terminal"_s).isNull());
}

void tst_IconTheme::choosesAThemeForOtherFilesToo()
{
    platform::ensureIconTheme();
    QVERIFY(platform::LinkIcons().icon(testhome::writeFile(u"note.txt"_s, "text")).isNull());
    QCOMPARE(colorOf(QIcon::fromTheme(u"utilities-terminal"_s)), QColor(Qt::blue));
}

void tst_IconTheme::findsIconsOutsideOfThemes()
{
    platform::ensureIconTheme();
    QCOMPARE(colorOf(QIcon::fromTheme(u"loose"_s)), QColor(Qt::yellow));
    QCOMPARE(colorOf(QIcon::fromTheme(u"users"_s)), QColor(Qt::white));
}

void tst_IconTheme::showsTheTypeOfAFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QColor>("color");
    QTest::newRow("type") << u"a.pdf"_s << QColor(Qt::darkRed);
    QTest::newRow("kind of the type") << u"a.png"_s << QColor(Qt::darkGreen);
    QTest::newRow("suffix in capitals") << u"A.PNG"_s << QColor(Qt::darkGreen);
    QTest::newRow("not in the theme") << u"a.zip"_s << QColor();
}

void tst_IconTheme::showsTheTypeOfAFile()
{
    QFETCH(QString, name);
    testhome::writeFile(u"data/mime/packages/types.xml"_s,
                        R"(<mime-info xmlns="http://www.freedesktop.org/standards/shared-mime-info">
                           <mime-type type="application/pdf"><glob pattern="*.pdf"/></mime-type>
                           <mime-type type="application/zip"><glob pattern="*.zip"/></mime-type>
                           <mime-type type="image/png"><glob pattern="*.png"/></mime-type>
                           </mime-info>)");
    platform::ensureIconTheme();
    const QString path = testhome::writeFile(u"types/"_s + name, {});
    QTEST(colorOf(platform::fileTypeIcon(QFileInfo(path))), "color");
}

void tst_IconTheme::prefersTheRichestTheme_data()
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

void tst_IconTheme::prefersTheRichestTheme()
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

int tst_IconTheme::main(int argc, char *argv[])
{
    iconthemefiles::leaveTheDesktop();
    iconthemefiles::installIcons();
    QGuiApplication application(argc, argv);
    tst_IconTheme test;
    return QTest::qExec(&test, argc, argv);
}

VASKEL_TEST_WITH_MAIN(tst_IconTheme, tst_IconTheme::main)
#include "tst_IconTheme.moc"
