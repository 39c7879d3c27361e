// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Link.h"

#include "platform/windows/Recording.h"
#include "platform/windows/ShellLink.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include "launcher/AppLauncher.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_Link : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void startsWhatTheLinkNames();
    void startsTheLinkWithASuffixInCapitals();
    void startsALinkOfAChineseName();
    void startsAProgramByItsFullPath();
    void startsABareCommandOfTheSearchPath();
    void refuses_data();
    void refuses();

private:
    QList<QStringList> starts() const { return recording::starts(m_file); }

    QString m_file;
};

void tst_Link::init()
{
    testhome::reset();
    m_file = testhome::path() + "/starts.txt"_L1;
}

void tst_Link::startsWhatTheLinkNames()
{
    const QString folder = testhome::path() + "/work"_L1;
    QVERIFY(QDir().mkpath(folder));
    const QString path = testhome::path() + "/Program.lnk"_L1;
    const ShellLink link{recording::program(), m_file + " one \"two three\""_L1, folder, {}};
    QVERIFY(link.write(path));
    QVERIFY(platform::openLink(path));
    QTRY_COMPARE(starts().size(), 1);
    QCOMPARE(starts().first().mid(1), (QStringList{folder, u"one"_s, u"two three"_s}));
}

void tst_Link::startsTheLinkWithASuffixInCapitals()
{
    const QString path = testhome::path() + "/Program.LNK"_L1;
    QVERIFY((ShellLink{recording::program(), m_file, {}, {}}.write(path)));
    QVERIFY(AppLauncher().launch(path));
    QTRY_COMPARE(starts().size(), 1);
}

void tst_Link::startsALinkOfAChineseName()
{
    const QString path = testhome::path() + u"/办公 软件/计算器.lnk"_s;
    QVERIFY((ShellLink{recording::program(), m_file, {}, {}}.write(path)));
    QVERIFY(AppLauncher().launch(path));
    QTRY_COMPARE(starts().size(), 1);
}

void tst_Link::startsAProgramByItsFullPath()
{
    const QString copy = testhome::path() + "/a program.exe"_L1;
    QVERIFY(QFile::copy(recording::program(), copy));
    QVERIFY(AppLauncher().launch(copy));
    QTRY_COMPARE(recording::starts(copy + ".txt"_L1).size(), 1);
    const QStringList start = recording::starts(copy + ".txt"_L1).first();
    QCOMPARE(start, (QStringList{copy, QDir::currentPath()}));
}

void tst_Link::startsABareCommandOfTheSearchPath()
{
    const QString copy = testhome::path() + "/bin/vaskeltestcommand.exe"_L1;
    QVERIFY(QDir().mkpath(testhome::path() + "/bin"_L1));
    QVERIFY(QFile::copy(recording::program(), copy));
    qputenv("PATH", QDir::toNativeSeparators(testhome::path() + "/bin;"_L1).toLocal8Bit()
                        + qgetenv("PATH"));
    QVERIFY(AppLauncher().launch(u"vaskeltestcommand"_s));
    QTRY_COMPARE(recording::starts(copy + ".txt"_L1).size(), 1);
}

void tst_Link::refuses_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing link") << testhome::path() + "/missing.lnk"_L1;
    QTest::newRow("missing program") << testhome::path() + "/missing.exe"_L1;
    QTest::newRow("unknown command") << u"vaskel-no-such-command"_s;
    QTest::newRow("command with an option") << u"notepad /A"_s;
    QTest::newRow("address in capitals") << u"HTTPS://example.org/"_s;
}

void tst_Link::refuses()
{
    QFETCH(QString, path);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"^Launching: "_s));
    QVERIFY(!AppLauncher().launch(path));
    QCOMPARE(starts(), QList<QStringList>());
}

VASKEL_TEST(tst_Link, QApplication)
#include "tst_Link.moc"
