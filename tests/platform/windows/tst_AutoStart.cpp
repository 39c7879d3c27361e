// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AutoStart.h"

#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "support/TestRegistry.h"

#include "settings/Settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;
using filecontent::contentOf;

namespace {

const QString runKey = uR"(\Software\Microsoft\Windows\CurrentVersion\Run)"_s;

// Read by another program of the system.
QString queried(const QString &name)
{
    QProcess reg;
    reg.start(u"reg"_s, {u"query"_s, testhome::registryPath() + runKey, u"/v"_s, name});
    if (!reg.waitForFinished()) {
        return {u"reg does not end"_s};
    }
    return QString::fromLocal8Bit(reg.readAllStandardOutput());
}

void registerByHand(const QString &name, const QString &value)
{
    QSettings(u"HKEY_CURRENT_USER"_s + runKey, QSettings::NativeFormat).setValue(name, value);
}

QString ownPath()
{
    return QCoreApplication::applicationFilePath().replace(u'/', u'\\');
}

} // namespace

class tst_AutoStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void storesThePathWithBackslashesAndWithoutQuotes();
    void storesAPathWithBlanksWithoutQuotes();
    void replacesThePathOfAMovedProgram();
    void removesTheValueAndNoOther();
    void everyStartWithAutoStartRewritesTheValue();
    void everyStartWithoutAutoStartRemovesTheValue();
};

void tst_AutoStart::storesThePathWithBackslashesAndWithoutQuotes()
{
    platform::applyAutoStart(true);
    const QString answer = queried(u"Vaskel"_s);
    QVERIFY2(answer.contains("REG_SZ"_L1), qPrintable(answer));
    const QString value = answer.section(u"REG_SZ"_s, 1).trimmed();
    QCOMPARE(value, ownPath());
    QVERIFY(!value.contains(u'/'));
    QVERIFY(!value.contains(u'"'));
}

void tst_AutoStart::storesAPathWithBlanksWithoutQuotes()
{
    const QString path = testhome::writeFile(u"two words/the program.exe"_s,
                                             contentOf(QStringLiteral(AUTOSTARTER)).value());
    QCOMPARE(QProcess::execute(path, {u"on"_s}), 0);
    QCOMPARE(queried(u"Vaskel"_s).section(u"REG_SZ"_s, 1).trimmed(),
             QDir::toNativeSeparators(path));
}

void tst_AutoStart::replacesThePathOfAMovedProgram()
{
    registerByHand(u"Vaskel"_s, uR"(C:\Old Place\Vaskel.exe)"_s);
    platform::applyAutoStart(true);
    QCOMPARE(queried(u"Vaskel"_s).section(u"REG_SZ"_s, 1).trimmed(), ownPath());
}

void tst_AutoStart::removesTheValueAndNoOther()
{
    registerByHand(u"Other"_s, uR"(C:\other.exe)"_s);
    platform::applyAutoStart(true);
    platform::applyAutoStart(false);
    QVERIFY(!queried(u"Vaskel"_s).contains("REG_SZ"_L1));
    QVERIFY(queried(u"Other"_s).contains(uR"(C:\other.exe)"_s));
}

void tst_AutoStart::everyStartWithAutoStartRewritesTheValue()
{
    Settings().setAutoStart(true);
    registerByHand(u"Vaskel"_s, uR"(C:\Old Place\Vaskel.exe)"_s);
    const Settings settings;
    QCOMPARE(queried(u"Vaskel"_s).section(u"REG_SZ"_s, 1).trimmed(), ownPath());
}

void tst_AutoStart::everyStartWithoutAutoStartRemovesTheValue()
{
    registerByHand(u"Vaskel"_s, u"by hand"_s);
    const Settings settings;
    QVERIFY(!queried(u"Vaskel"_s).contains("by hand"_L1));
}

VASKEL_TEST(tst_AutoStart, QCoreApplication)
#include "tst_AutoStart.moc"
