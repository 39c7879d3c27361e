// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/CommandText.h"

#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_CommandText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void splitsAtTheFirstBlank_data();
    void splitsAtTheFirstBlank();
};

void tst_CommandText::splitsAtTheFirstBlank_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("hasArguments");
    QTest::addColumn<QString>("arguments");

    QTest::newRow("empty text has no arguments") << QString() << QString() << false << QString();
    QTest::newRow("command alone has no arguments") << u"calc"_s << u"calc"_s << false << QString();
    QTest::newRow("trailing blank gives empty arguments")
        << u"calc "_s << u"calc"_s << true << QString();
    QTest::newRow("command and arguments") << u"calc 1+2"_s << u"calc"_s << true << u"1+2"_s;
    QTest::newRow("further blanks belong to the arguments")
        << u"calc  1 + 2 "_s << u"calc"_s << true << u" 1 + 2 "_s;
    QTest::newRow("leading blank gives an empty command")
        << u" calc"_s << QString() << true << u"calc"_s;
    QTest::newRow("tab is no blank") << u"calc\t1+2"_s << u"calc\t1+2"_s << false << QString();
    QTest::newRow("no-break space is no blank")
        << u"calc\u00A01"_s << u"calc\u00A01"_s << false << QString();
    QTest::newRow("Chinese text") << u"计算 器"_s << u"计算"_s << true << u"器"_s;
}

void tst_CommandText::splitsAtTheFirstBlank()
{
    QFETCH(QString, text);
    QFETCH(QString, command);
    QFETCH(bool, hasArguments);
    QFETCH(QString, arguments);

    const CommandText parts = splitCommandText(text);
    QCOMPARE(parts.command, command);
    QCOMPARE(parts.arguments.has_value(), hasArguments);
    QCOMPARE(parts.arguments.value_or(QString()), arguments);
    QCOMPARE(parts.joined(), text);
}

VASKEL_TEST(tst_CommandText, QCoreApplication)
#include "tst_CommandText.moc"
