// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Translation.h"
#include "support/TestProgram.h"

#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;

class tst_Translation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTheFirstLanguageWithATranslation_data();
    void takesTheFirstLanguageWithATranslation();
    void chineseKnowsItsLanguage();
    void looksIntoNoOtherFolder();
};

void tst_Translation::takesTheFirstLanguageWithATranslation_data()
{
    QTest::addColumn<QStringList>("languages");
    QTest::addColumn<bool>("found");

    QTest::newRow("language and territory: found") << QStringList{u"de-DE"_s} << true;
    QTest::newRow("language alone gets its usual territory: found") << QStringList{u"de"_s} << true;
    QTest::newRow("second language: found") << QStringList{u"fr-FR"_s, u"de-DE"_s} << true;
    QTest::newRow("another territory: not found") << QStringList{u"de-AT"_s} << false;
    QTest::newRow("no translation: not found") << QStringList{u"fr-FR"_s, u"eo"_s} << false;
    QTest::newRow("no language: not found") << QStringList{} << false;
    QTest::newRow("C: not found") << QStringList{u"C"_s} << false;
}

void tst_Translation::takesTheFirstLanguageWithATranslation()
{
    QFETCH(const QStringList, languages);
    QFETCH(const bool, found);

    QTranslator translator;
    QCOMPARE(loadTranslation(translator, languages, QStringLiteral(TRANSLATION_FOLDER)), found);
    QCOMPARE(translator.translate("MainWindow", "Pinned"), found ? u"Angeheftet"_s : QString());
}

// Qt formats with it, and a translation file in another language would still load.
void tst_Translation::chineseKnowsItsLanguage()
{
    QTranslator translator;
    QVERIFY(loadTranslation(translator, {u"zh-CN"_s}, u"/nonexistent"_s));
    QCOMPARE(translator.language(), u"zh_CN"_s);
    QCOMPARE(translator.translate("AppLauncher", "Calculator"), u"计算器"_s);
}

void tst_Translation::looksIntoNoOtherFolder()
{
    QTranslator translator;
    QVERIFY(!loadTranslation(translator, {u"de-DE"_s}, u"/nonexistent"_s));
    QVERIFY(translator.isEmpty());
}

VASKEL_TEST(tst_Translation, QCoreApplication)
#include "tst_Translation.moc"
