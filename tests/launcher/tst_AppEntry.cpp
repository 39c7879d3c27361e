// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppEntry.h"

#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_AppEntry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsItsArguments();
    void convertsOnlyTheName();
    void lowersTheComparedFields();
    void equalTextsShareTheirMemory();
};

void tst_AppEntry::keepsItsArguments()
{
    const AppEntry app(u"QQ音乐"_s, u"/menu/QQ.lnk"_s, u"Start Menu / 腾讯"_s, u"/icons/1.png"_s);
    QCOMPARE(app.name, u"QQ音乐"_s);
    QCOMPARE(app.path, u"/menu/QQ.lnk"_s);
    QCOMPARE(app.description, u"Start Menu / 腾讯"_s);
    QCOMPARE(app.iconPath, u"/icons/1.png"_s);
}

void tst_AppEntry::convertsOnlyTheName()
{
    const AppEntry app(u"QQ音乐 2"_s, u"微信"_s, u"腾讯"_s, u"图"_s);
    QCOMPARE(app.pinyin, u"qqyinle 2"_s);
    QCOMPARE(app.pinyinInitials, u"qqyl"_s);
}

void tst_AppEntry::lowersTheComparedFields()
{
    const AppEntry app(u"Éclair QQ"_s, u"PATH"_s, u"START Menu / ÄÖ"_s, QString());
    QCOMPARE(app.lowerName, u"éclair qq"_s);
    QCOMPARE(app.lowerDescription, u"start menu / äö"_s);
}

void tst_AppEntry::equalTextsShareTheirMemory()
{
    const AppDescription shared(u"Start Menu"_s);
    const AppEntry first(u"Firefox"_s, u"1"_s, shared, QString());
    const AppEntry second(u"音乐"_s, u"2"_s, shared, QString());
    QCOMPARE(first.lowerName, u"firefox"_s);
    QCOMPARE(first.pinyin, u"firefox"_s);
    QCOMPARE(first.pinyinInitials, u"firefox"_s);
    QCOMPARE(first.pinyin.constData(), first.lowerName.constData());
    QCOMPARE(first.pinyinInitials.constData(), first.lowerName.constData());
    QCOMPARE(second.lowerName.constData(), second.name.constData());
    QCOMPARE(first.lowerDescription, u"start menu"_s);
    QCOMPARE(first.lowerDescription.constData(), second.lowerDescription.constData());
}

VASKEL_TEST(tst_AppEntry, QCoreApplication)
#include "tst_AppEntry.moc"
