// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AutoStart.h"

#include "platform/Link.h"
#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;
using filecontent::contentOf;

class tst_AutoStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void writesAnEntryForTheRunningProgram();
    void doesNotRewriteAnUnchangedEntry();
    void replacesADifferentEntry_data();
    void replacesADifferentEntry();
    void leavesTheTargetOfASymbolicLinkAlone();
    void removesTheEntryWhoeverWroteIt();
    void removesADanglingSymbolicLink();
    void removingNothingIsFine();
    void leavesNoFurtherFilesBehind();
    void ignoresAFileInPlaceOfTheFolder_data();
    void ignoresAFileInPlaceOfTheFolder();
    void theDesktopStartsAnyPath_data();
    void theDesktopStartsAnyPath();
    void startsAPathWithAnEqualsSignByTheShell();
    void followsTheProgramToAnotherPlace();
};

namespace {

QString folderPath()
{
    return testhome::path() + "/config/autostart"_L1;
}

QString entryPath()
{
    return folderPath() + "/Vaskel.desktop"_L1;
}

QString installProgram(const QString &relativePath)
{
    QString path =
        testhome::writeFile(relativePath, contentOf(QStringLiteral(AUTOSTARTER)).value());
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

bool run(const QString &program, const QString &argument)
{
    return QProcess::execute(program, {argument}) == 0;
}

QByteArray validatorOutput()
{
    QProcess validator;
    validator.setProcessChannelMode(QProcess::MergedChannels);
    validator.start(u"desktop-file-validate"_s, {entryPath()});
    return validator.waitForFinished() ? validator.readAll() : "desktop-file-validate is missing";
}

} // namespace

void tst_AutoStart::init()
{
    testhome::reset();
    qputenv("RECORD", QFile::encodeName(testhome::path() + "/record"_L1));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
}

void tst_AutoStart::writesAnEntryForTheRunningProgram()
{
    platform::applyAutoStart(true);
    const QByteArray expected = "[Desktop Entry]\n"
                                "Type=Application\n"
                                "Name=Vaskel\n"
                                "Exec=\""
                                + QCoreApplication::applicationFilePath().toUtf8()
                                + "\"\n"
                                  "Icon=vaskel\n"
                                  "Terminal=false\n"
                                  "X-GNOME-Autostart-enabled=true\n";
    QCOMPARE(contentOf(entryPath()), expected);
    QCOMPARE(validatorOutput(), QByteArray());
}

void tst_AutoStart::doesNotRewriteAnUnchangedEntry()
{
    platform::applyAutoStart(true);
    QFile file(entryPath());
    QVERIFY(file.open(QIODevice::ReadWrite));
    const QDateTime longAgo = QDateTime::fromSecsSinceEpoch(1'000'000'000);
    QVERIFY(file.setFileTime(longAgo, QFileDevice::FileModificationTime));
    file.close();
    platform::applyAutoStart(true);
    QCOMPARE(QFileInfo(entryPath()).lastModified(), longAgo);
}

void tst_AutoStart::replacesADifferentEntry_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("nonsense") << QByteArray("nonsense");
    QTest::newRow("another place")
        << QByteArray("[Desktop Entry]\nType=Application\nName=Vaskel\nExec=/old/Vaskel\n");
    QTest::newRow("switched off elsewhere")
        << QByteArray("[Desktop Entry]\nType=Application\nName=Vaskel\nExec=x\nHidden=true\n");
    QTest::newRow("huge") << QByteArray(10'000'000, 'x');
}

void tst_AutoStart::replacesADifferentEntry()
{
    QFETCH(QByteArray, content);
    platform::applyAutoStart(true);
    const QByteArray expected = contentOf(entryPath()).value();
    testhome::writeFile(u"config/autostart/Vaskel.desktop"_s, content);
    platform::applyAutoStart(true);
    QCOMPARE(contentOf(entryPath()), expected);
}

void tst_AutoStart::leavesTheTargetOfASymbolicLinkAlone()
{
    const QString target = testhome::writeFile(u"data/applications/Vaskel.desktop"_s, "menu");
    QVERIFY(QDir().mkpath(folderPath()));
    QVERIFY(QFile::link(target, entryPath()));
    platform::applyAutoStart(true);
    QCOMPARE(contentOf(target), QByteArray("menu"));
    QVERIFY(!QFileInfo(entryPath()).isSymLink());
    QVERIFY(contentOf(entryPath()).value().contains("Name=Vaskel"));
}

void tst_AutoStart::removesTheEntryWhoeverWroteIt()
{
    testhome::writeFile(u"config/autostart/Vaskel.desktop"_s, "by hand");
    const QString other = testhome::writeFile(u"config/autostart/other.desktop"_s, "other");
    platform::applyAutoStart(false);
    QVERIFY(!QFile::exists(entryPath()));
    QVERIFY(QFile::exists(other));
}

void tst_AutoStart::removesADanglingSymbolicLink()
{
    QVERIFY(QDir().mkpath(folderPath()));
    QVERIFY(QFile::link(u"/no/such/file"_s, entryPath()));
    platform::applyAutoStart(false);
    QVERIFY(!QFileInfo(entryPath()).isSymLink());
}

void tst_AutoStart::removingNothingIsFine()
{
    platform::applyAutoStart(false);
    QVERIFY(!QFile::exists(folderPath()));
}

void tst_AutoStart::leavesNoFurtherFilesBehind()
{
    platform::applyAutoStart(true);
    QCOMPARE(QDir(folderPath()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{u"Vaskel.desktop"_s});
}

void tst_AutoStart::ignoresAFileInPlaceOfTheFolder_data()
{
    QTest::addColumn<QString>("blocked");
    QTest::newRow("a file for the folder") << u"config/autostart"_s;
    QTest::newRow("a folder for the file") << u"config/autostart/Vaskel.desktop/x"_s;
}

void tst_AutoStart::ignoresAFileInPlaceOfTheFolder()
{
    QFETCH(QString, blocked);
    const QString path = testhome::writeFile(blocked, "in the way");
    platform::applyAutoStart(true);
    platform::applyAutoStart(false);
    QCOMPARE(contentOf(path), QByteArray("in the way"));
}

void tst_AutoStart::theDesktopStartsAnyPath_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("isValid");
    for (const auto &name :
         {u"plain"_s, u"two  blanks "_s, u" blank first"_s, u"double\"quote"_s, u"single'quote"_s,
          u"$HOME ${HOME}"_s, u"`id`"_s, u"back\\slash\\\\"_s, u"\\s\\n"_s, u"100%"_s, u"%f%U%%"_s,
          u"a=b"_s, u"a=b %c \"\\$"_s, u"~"_s, u"#;&|*?<>()[]{}!"_s, u"line\nend"_s,
          u"记事本 Ä é"_s, u"\U0001F680"_s}) {
        QTest::newRow(qPrintable(name)) << name << true;
    }
    // The format allows no control characters, but readers accept them.
    QTest::newRow("tab") << u"tab\tin it"_s << false;
    QTest::newRow("escape") << u"\x1b[0m"_s << false;
}

void tst_AutoStart::theDesktopStartsAnyPath()
{
    QFETCH(QString, folder);
    const QString program = installProgram("programs/"_L1 + folder + "/Vaskel"_L1);
    QVERIFY(run(program, u"on"_s));
    QTEST(validatorOutput().isEmpty(), "isValid");
    QVERIFY(platform::openLink(entryPath()));
    QTRY_COMPARE(
        QString::fromUtf8(contentOf(testhome::path() + "/record"_L1).value_or(QByteArray())),
        program);
    QVERIFY(run(program, u"off"_s));
    QVERIFY(!QFile::exists(entryPath()));
}

void tst_AutoStart::startsAPathWithAnEqualsSignByTheShell()
{
    QVERIFY(run(installProgram(u"a=b/Vaskel"_s), u"on"_s));
    QVERIFY(contentOf(entryPath()).value().contains("\nExec=sh -c \""));
}

void tst_AutoStart::followsTheProgramToAnotherPlace()
{
    const QString before = installProgram(u"before/Vaskel"_s);
    QVERIFY(run(before, u"on"_s));
    QVERIFY(QDir().rename(testhome::path() + "/before"_L1, testhome::path() + "/after"_L1));
    const QString after = testhome::path() + "/after/Vaskel"_L1;
    QVERIFY(run(after, u"on"_s));
    QVERIFY(contentOf(entryPath()).value().contains("Exec=\"" + after.toUtf8() + "\"\n"));
}

VASKEL_TEST(tst_AutoStart, QCoreApplication)
#include "tst_AutoStart.moc"
