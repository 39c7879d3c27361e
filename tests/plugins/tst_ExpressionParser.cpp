// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/ExpressionParser.h"

#include "support/TestProgram.h"

#include <QTest>
#include <QThread>

#include <bit>
#include <cmath>
#include <limits>
#include <memory>
#include <random>

using namespace Qt::StringLiterals;

namespace {

struct Answer
{
    bool isValue = false;
    double value = -12345.0;
    QString error = u"untouched"_s;
};

Answer evaluate(const QString &input)
{
    Answer answer;
    answer.isValue = ExpressionParser(input).evaluate(answer.value, answer.error);
    return answer;
}

// Compares bits, so the sign of a zero matters.
bool isSame(double left, double right)
{
    return std::bit_cast<quint64>(left) == std::bit_cast<quint64>(right);
}

bool isNear(double value, double expected)
{
    return std::abs(value - expected) <= 1e-14 * std::abs(expected);
}

// The stack of the main thread on Windows is 1 MiB. Use half of it, unless frames are instrumented,
// since the event loop needs some.
#ifdef __SANITIZE_ADDRESS__
constexpr int smallStackSize = 1024 * 1024;
#else
constexpr int smallStackSize = 512 * 1024;
#endif

QString wrapped(const QString &opening, int count, const QString &core, const QString &closing)
{
    return opening.repeated(count) + core + closing.repeated(count);
}

} // namespace

class tst_ExpressionParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void evaluates_data();
    void evaluates();
    void fails_data();
    void fails();
    void countsArguments_data();
    void countsArguments();
    void callsTheMathematicalFunction_data();
    void callsTheMathematicalFunction();
    void leavesTheOtherOutputUntouched();
    void mayBeReused();
    void readsTheTextAtEachEvaluation();
    void readsEveryLiteralAsQtDoes_data();
    void readsEveryLiteralAsQtDoes();
    void readsRandomLiteralsAsQtDoes();
    void takesAnyNumberOfSigns_data();
    void takesAnyNumberOfSigns();
    void acceptsOrdinaryDepth_data();
    void acceptsOrdinaryDepth();
    void rejectsTooDeepNesting_data();
    void rejectsTooDeepNesting();
    void countsTheDepthOfEachGroupSeparately();
    void answersDeepTextOnASmallStack_data();
    void answersDeepTextOnASmallStack();
    void answersTenThousandLevels_data();
    void answersTenThousandLevels();
};

void tst_ExpressionParser::evaluates_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<double>("expected");

    const auto row = [](const QString &input, double expected) {
        QTest::newRow(qPrintable(input)) << input << expected;
    };
    // Precedence and grouping
    row(u"1+2*3"_s, 7);
    row(u"(1+2)*3"_s, 9);
    row(u"2*3+4*5"_s, 26);
    row(u"7-2-1"_s, 4);
    row(u"7-2+1"_s, 6);
    row(u"2/4/2"_s, 0.25);
    row(u"8/4*2"_s, 4);
    row(u"7%4*2"_s, 6);
    row(u"2*7%4"_s, 2);
    row(u"1+7%4"_s, 4);
    row(u"2*3^2"_s, 18);
    row(u"2^3*2"_s, 16);
    row(u"2^10"_s, 1024);
    row(u"2^3^2"_s, 512);
    row(u"(2^3)^2"_s, 64);
    row(u"((((7))))"_s, 7);
    // Signs
    row(u"-2^2"_s, -4);
    row(u"(-2)^2"_s, 4);
    row(u"2^-2"_s, 0.25);
    row(u"2^+2"_s, 4);
    row(u"2^--2"_s, 4);
    row(u"2^-2^2"_s, 0.0625);
    row(u"-2^-2"_s, -0.25);
    row(u"2*-3"_s, -6);
    row(u"6/-2"_s, -3);
    row(u"6%-4"_s, 2);
    row(u"2--3"_s, 5);
    row(u"2+-3"_s, -1);
    row(u"--3"_s, 3);
    row(u"---3"_s, -3);
    row(u"+-+3"_s, -3);
    row(u"+3"_s, 3);
    row(u"- - 3"_s, 3);
    row(u"-0"_s, -0.0);
    row(u"--0"_s, 0.0);
    // Remainder
    row(u"10%3"_s, 1);
    row(u"5.5%2"_s, 1.5);
    row(u"-7%3"_s, -1);
    row(u"7%-3"_s, 1);
    row(u"5%(1e308*10)"_s, 5);
    // Literals
    row(u"5."_s, 5);
    row(u".5"_s, 0.5);
    row(u"5.e1"_s, 50);
    row(u".5e1"_s, 5);
    row(u"007"_s, 7);
    row(u"2e3"_s, 2000);
    row(u"2E3"_s, 2000);
    row(u"2e+3"_s, 2000);
    row(u"2e-3"_s, 0.002);
    row(u"0.1+0.2"_s, 0.1 + 0.2);
    row(u"1.7976931348623157e308"_s, std::numeric_limits<double>::max());
    row(u"5e-324"_s, std::numeric_limits<double>::denorm_min());
    // Constants
    row(u"pi"_s, 3.141592653589793);
    row(u"PI"_s, 3.141592653589793);
    row(u"Pi"_s, 3.141592653589793);
    row(u"e"_s, 2.718281828459045);
    row(u"E"_s, 2.718281828459045);
    row(u"2*e"_s, 2 * 2.718281828459045);
    row(u"e^2"_s, std::pow(2.718281828459045, 2));
    row(u"e+2"_s, 2.718281828459045 + 2);
    // Functions
    row(u"sqrt(16)"_s, 4);
    row(u"sqrt (16)"_s, 4);
    row(u"Sqrt(4)"_s, 2);
    row(u"SQRT(4)"_s, 2);
    row(u"log(e)"_s, 1);
    row(u"sqrt(sqrt(16))"_s, 2);
    row(u"max(1+1, min(7,2^3))"_s, 7);
    row(u"-sqrt(16)^2"_s, -16);
    row(u"2^sqrt(16)"_s, 16);
    row(u"sqrt(16)^2"_s, 16);
    // White space
    row(u"  1 +  2  "_s, 3);
    row(u"\t1\n+\r2\v\f"_s, 3);
    row(u"\u00a01\u3000+\u20282"_s, 3);
    row(u"min ( 1 , 2 )"_s, 1);
    row(u"( 1 ) ^ 2"_s, 1);
    row(u"2 ^ - 2"_s, 0.25);
    // Infinities and NaNs as intermediate values
    row(u"1/(1e308*10)"_s, 0);
    row(u"min(1/sqrt(-1),5)"_s, 5);
    row(u"max(5%sqrt(-1),5)"_s, 5);
    row(u"(-1)^0.5^0"_s, -1);
    row(u"sqrt(-1)^0"_s, 1);
}

void tst_ExpressionParser::evaluates()
{
    QFETCH(const QString, input);
    QFETCH(const double, expected);

    const Answer answer = evaluate(input);
    QVERIFY2(answer.isValue, qPrintable(answer.error));
    QVERIFY2(isSame(answer.value, expected), qPrintable(QString::number(answer.value, 'g', 17)));
}

void tst_ExpressionParser::fails_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("position");

    const QString noOperand = u"Expected number, constant, or function"_s;
    const QString noName = u"Expected '(' after function name"_s;
    const QString noClosing = u"Expected ')'"_s;
    const QString badNumber = u"Invalid number"_s;
    const QString badExponent = u"Invalid exponent"_s;
    const QString byZero = u"Division by zero"_s;
    const QString unexpected = u"Unexpected token"_s;
    const QString notFinite = u"Result is not finite"_s;
    const auto row = [](const QString &input, const QString &message, int position) {
        QTest::newRow(input.isEmpty() ? "empty" : qPrintable(input))
            << input << message << position;
    };

    row(QString(), noOperand, 1);
    row(u" "_s, noOperand, 2);
    row(u"   "_s, noOperand, 4);
    row(u"$"_s, noOperand, 1);
    row(u"  $"_s, noOperand, 3);
    row(u"😀"_s, noOperand, 1);
    row(u"1+"_s, noOperand, 3);
    row(u" 1+"_s, noOperand, 4);
    row(u"1+  "_s, noOperand, 5);
    row(u"1-"_s, noOperand, 3);
    row(u"-"_s, noOperand, 2);
    row(u"2**3"_s, noOperand, 3);
    row(u"2^"_s, noOperand, 3);
    row(u"*2"_s, noOperand, 1);
    row(u"()"_s, noOperand, 3);
    row(u")"_s, noOperand, 1);
    row(u","_s, noOperand, 1);
    row(u"($)+1"_s, noOperand, 2);
    row(u"()^2+1"_s, noOperand, 5);
    row(u"1+*2"_s, noOperand, 3);
    row(u"^2"_s, noOperand, 3);
    row(u"^2*3"_s, noOperand, 3);
    row(u"sqrt("_s, noOperand, 6);
    row(u"sqrt( "_s, noOperand, 7);
    row(u"min(1,)"_s, noOperand, 8);
    row(u"min(,1)"_s, noOperand, 8);
    row(u"min(,)"_s, noOperand, 7);
    row(u"foo(,)"_s, noOperand, 7);

    row(u"1 2"_s, unexpected, 3);
    row(u"2pi"_s, unexpected, 2);
    row(u"2(3)"_s, unexpected, 2);
    row(u"(2)(3)"_s, unexpected, 4);
    row(u"1.2.3"_s, unexpected, 4);
    row(u"1e5.5"_s, unexpected, 4);
    row(u"pi(2)"_s, unexpected, 3);
    row(u"e(2)"_s, unexpected, 2);
    row(u"5!"_s, unexpected, 2);
    row(u"50%%"_s, noOperand, 4);
    row(u"50%"_s, noOperand, 4);
    row(u"1,000"_s, unexpected, 2);
    row(u"1,2"_s, unexpected, 2);
    row(u"(1,2)"_s, noClosing, 3);
    row(u"x=1"_s, noName, 2);
    row(u"0x10"_s, unexpected, 2);
    row(u"1)"_s, unexpected, 2);
    row(u"1  )"_s, unexpected, 4);
    row(u"1e308*10 2"_s, unexpected, 10);
    row(u"1"_s + QChar(QChar::Null), unexpected, 2);

    row(u"1/0"_s, byZero, 4);
    row(u"1/0 + 3"_s, byZero, 5);
    row(u"1/0*3"_s, byZero, 4);
    row(u"5%0"_s, byZero, 4);
    row(u"5%0.0"_s, byZero, 6);
    row(u"1/-0"_s, byZero, 5);
    row(u"5%-0"_s, byZero, 5);
    row(u"(1/0)+3"_s, byZero, 6);
    row(u"(1/0)^(2)+3"_s, byZero, 10);
    row(u"1/(2-2)"_s, byZero, 8);
    row(u"foo(1/0)"_s, byZero, 9);
    row(u"foo(1/0,2,3)"_s, byZero, 13);
    row(u"1/0 $"_s, byZero, 5);

    row(u"(1"_s, noClosing, 3);
    row(u"(1 "_s, noClosing, 4);
    row(u"((1)"_s, noClosing, 5);
    row(u"(1 2)"_s, noClosing, 4);
    row(u"min(1,2"_s, noClosing, 8);
    row(u"min(1 2)"_s, noClosing, 7);
    row(u"foo(1"_s, noClosing, 6);

    row(u"foo"_s, noName, 4);
    row(u"foo "_s, noName, 5);
    row(u"foo^2"_s, noName, 6);
    row(u"foo+2"_s, noName, 4);
    row(u"foo^bar^2"_s, noName, 10);
    row(u"(foo)"_s, noName, 6);
    row(u"e2"_s, noName, 3);
    row(u"_"_s, noName, 2);
    row(u"pi2"_s, noName, 4);
    row(u"pi_"_s, noName, 4);
    row(u"sqrt 4"_s, noName, 6);

    row(u"sqrt()"_s, u"Function 'sqrt' expects one argument"_s, 7);
    row(u"sqrt( )"_s, u"Function 'sqrt' expects one argument"_s, 8);
    row(u"sqrt(1,2)"_s, u"Function 'sqrt' expects one argument"_s, 10);
    row(u"SQRT(1,2)"_s, u"Function 'sqrt' expects one argument"_s, 10);
    row(u"min(1)"_s, u"Function 'min' expects two arguments"_s, 7);
    row(u"log(1,2,3)"_s, u"Function 'log' expects two arguments"_s, 11);

    row(u"foo(1)"_s, u"Unknown function 'foo'"_s, 7);
    row(u"FOO(1)"_s, u"Unknown function 'foo'"_s, 7);
    row(u"foo()"_s, u"Unknown function 'foo'"_s, 6);
    row(u"_a1(1,2,3)"_s, u"Unknown function '_a1'"_s, 11);
    row(u"ÄÖ(1)"_s, u"Unknown function 'äö'"_s, 6);
    row(u"平方(1)"_s, u"Unknown function '平方'"_s, 6);
    row(u"foo(1)^2"_s, u"Unknown function 'foo'"_s, 9);
    row(u"log2(1)"_s, u"Unknown function 'log2'"_s, 8);
    // Lower case, not case folding: a long s does not become an s, nor a dotted I an i.
    row(u"ſin(1)"_s, u"Unknown function 'ſin'"_s, 7);
    row(u"sİn(1)"_s, u"Unknown function 'si\u0307n'"_s, 7);

    row(u"."_s, badNumber, 2);
    row(u". 5"_s, badNumber, 3);
    row(u".e5"_s, badNumber, 2);
    row(u"1+."_s, badNumber, 4);
    row(u"1e999"_s, badNumber, 6);
    row(u"1e-999"_s, badNumber, 7);
    row(u"1e309"_s, badNumber, 6);
    row(u"1e-324"_s, badNumber, 7);
    row(u"1e99999999999"_s, badNumber, 14);
    row(u"٣"_s, badNumber, 2);
    row(u"１２"_s, badNumber, 3);
    row(u"1٣"_s, badNumber, 3);
    row(u"1.٣"_s, badNumber, 4);
    row(u"1e٣"_s, badNumber, 4);
    row(u"1+٣)"_s, badNumber, 4);

    row(u"1e"_s, badExponent, 3);
    row(u"1E"_s, badExponent, 3);
    row(u"2e"_s, badExponent, 3);
    row(u"1e+"_s, badExponent, 4);
    row(u"1e-"_s, badExponent, 4);
    row(u"1e--5"_s, badExponent, 4);
    row(u"1e 5"_s, badExponent, 4);
    row(u"1e+ 5"_s, badExponent, 5);
    row(u"1e^2"_s, badExponent, 5);
    row(u"1.e"_s, badExponent, 4);

    row(u"sqrt(-1)"_s, notFinite, 9);
    row(u"ln(0)"_s, notFinite, 6);
    row(u"log(-1)"_s, notFinite, 8);
    row(u"log(8,1)"_s, notFinite, 9);
    row(u"0^-1"_s, notFinite, 5);
    row(u"pow(0,-1)"_s, notFinite, 10);
    row(u"1e308*10"_s, notFinite, 9);
    row(u"1e308*10  "_s, notFinite, 11);
    row(u"0*(1e308*10)"_s, notFinite, 13);
    row(u"1/sqrt(-1)"_s, notFinite, 11);
    row(u"5%sqrt(-1)"_s, notFinite, 11);
    row(u"(-1)^0.5"_s, notFinite, 9);
}

void tst_ExpressionParser::fails()
{
    QFETCH(const QString, input);
    QFETCH(const QString, message);
    QFETCH(const int, position);

    const Answer answer = evaluate(input);
    QVERIFY(!answer.isValue);
    QCOMPARE(answer.error, u"%1 at position %2"_s.arg(message).arg(position));
}

void tst_ExpressionParser::countsArguments_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QList<int>>("accepted");
    QTest::addColumn<QString>("expectation");

    const QString one = u"one argument"_s;
    const QString two = u"two arguments"_s;
    for (const char *name :
         {"sqrt", "sin", "cos", "tan", "abs", "floor", "ceil", "exp", "ln", "log10"}) {
        QTest::newRow(name) << QString::fromLatin1(name) << QList<int>{1} << one;
    }
    QTest::newRow("log") << u"log"_s << QList<int>{1, 2} << two;
    for (const char *name : {"min", "max", "pow"}) {
        QTest::newRow(name) << QString::fromLatin1(name) << QList<int>{2} << two;
    }
}

void tst_ExpressionParser::countsArguments()
{
    QFETCH(const QString, name);
    QFETCH(const QList<int>, accepted);
    QFETCH(const QString, expectation);

    for (int count = 0; count <= 3; ++count) {
        const QString input = name.toUpper() + u'(' + QStringList(count, u"2"_s).join(u',') + u')';
        const Answer answer = evaluate(input);
        QCOMPARE(answer.isValue, accepted.contains(count));
        if (!answer.isValue) {
            QCOMPARE(answer.error,
                     u"Function '%1' expects %2 at position %3"_s.arg(name, expectation)
                         .arg(input.size() + 1));
        }
    }
}

void tst_ExpressionParser::callsTheMathematicalFunction_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<double>("expected");

    const auto row = [](const QString &input, double expected) {
        QTest::newRow(qPrintable(input)) << input << expected;
    };
    row(u"sqrt(2)"_s, 1.4142135623730951);
    row(u"sin(1)"_s, 0.8414709848078965);
    row(u"cos(1)"_s, 0.5403023058681398);
    row(u"tan(1)"_s, 1.5574077246549023);
    row(u"abs(-2.5)"_s, 2.5);
    row(u"floor(-2.5)"_s, -3);
    row(u"floor(2.5)"_s, 2);
    row(u"ceil(-2.5)"_s, -2);
    row(u"ceil(2.5)"_s, 3);
    row(u"exp(2)"_s, 7.38905609893065);
    row(u"ln(100)"_s, 4.605170185988092);
    row(u"log(100)"_s, 4.605170185988092);
    row(u"log(8,2)"_s, 3);
    row(u"log(2,8)"_s, 1.0 / 3.0);
    row(u"log10(100)"_s, 2);
    row(u"min(3,-2)"_s, -2);
    row(u"min(-2,3)"_s, -2);
    row(u"max(3,-2)"_s, 3);
    row(u"max(-2,3)"_s, 3);
    row(u"pow(2,3)"_s, 8);
    row(u"min(sqrt(-1),5)"_s, 5);
    row(u"max(5,sqrt(-1))"_s, 5);
}

void tst_ExpressionParser::callsTheMathematicalFunction()
{
    QFETCH(const QString, input);
    QFETCH(const double, expected);

    const Answer answer = evaluate(input);
    QVERIFY2(answer.isValue, qPrintable(answer.error));
    QVERIFY2(isNear(answer.value, expected), qPrintable(QString::number(answer.value, 'g', 17)));
}

void tst_ExpressionParser::leavesTheOtherOutputUntouched()
{
    QCOMPARE(evaluate(u"1+2"_s).error, u"untouched"_s);
    QCOMPARE(evaluate(u"1+2+"_s).value, -12345.0);
    QCOMPARE(evaluate(u"1e308*10"_s).value, -12345.0);
}

void tst_ExpressionParser::mayBeReused()
{
    const QString good = u"2*21"_s;
    ExpressionParser goodParser(good);
    const QString bad = u"1/0"_s;
    ExpressionParser badParser(bad);
    const QString deep = wrapped(u"("_s, 1000, u"1"_s, u")"_s);
    ExpressionParser deepParser(deep);

    QString deepError;
    for (int pass = 0; pass < 3; ++pass) {
        double value = 0;
        QString error;
        QVERIFY(goodParser.evaluate(value, error));
        QCOMPARE(value, 42.0);
        QVERIFY(!badParser.evaluate(value, error));
        QCOMPARE(error, u"Division by zero at position 4"_s);
        QVERIFY(!deepParser.evaluate(value, error));
        QVERIFY(pass == 0 || error == deepError);
        deepError = error;
    }
}

void tst_ExpressionParser::readsTheTextAtEachEvaluation()
{
    QString text = u"1/0"_s;
    ExpressionParser parser(text);
    double value = 0;
    QString error;
    QVERIFY(!parser.evaluate(value, error));
    text = u"1+1"_s;
    QVERIFY(parser.evaluate(value, error));
    QCOMPARE(value, 2.0);
}

void tst_ExpressionParser::readsEveryLiteralAsQtDoes_data()
{
    QTest::addColumn<QString>("literal");
    for (const char *literal : {"0",
                                "0.0",
                                "000000000000000000000000000001",
                                "0.000000000000000000000000000001",
                                "1e22",
                                "1e23",
                                "1e-22",
                                "1e-23",
                                "9007199254740991",
                                "9007199254740992",
                                "9007199254740993",
                                "9007199254740993e22",
                                "9007199254740992.5",
                                "9007199254740991e22",
                                "9007199254740991e-22",
                                "18446744073709551615",
                                "18446744073709551616",
                                "36893488147419103233",
                                "123456789012345678901234567890",
                                "0.1",
                                "0.30000000000000004",
                                "3.141592653589793238462643383279",
                                "2.2250738585072011e-308",
                                "2.2250738585072014e-308",
                                "4.9e-324",
                                "2.4e-324",
                                "1.7976931348623158e308",
                                "1.7976931348623159e308",
                                "0e0",
                                "0e999",
                                "0e-999",
                                "0.0e22",
                                "1e0",
                                "1e00000000000000000000000005",
                                "1e-00000000000000000000000005",
                                "1e2147483648",
                                "1e-2147483648",
                                "1e4294967296",
                                "1e18446744073709551616",
                                "1e-18446744073709551617"}) {
        QTest::newRow(literal) << QString::fromLatin1(literal);
    }
}

void tst_ExpressionParser::readsEveryLiteralAsQtDoes()
{
    QFETCH(const QString, literal);

    bool isNumber = false;
    const double expected = literal.toDouble(&isNumber);
    const Answer answer = evaluate(literal);
    QCOMPARE(answer.isValue, isNumber);
    QVERIFY(!isNumber || isSame(answer.value, expected));
}

void tst_ExpressionParser::readsRandomLiteralsAsQtDoes()
{
    std::mt19937 random(20240229);
    const auto below = [&random](int limit) {
        return std::uniform_int_distribution(0, limit - 1)(random);
    };
    const auto digits = [&below](int count) {
        QString text;
        while (text.size() < count) {
            text += QString::number(below(10));
        }
        return text;
    };
    for (int pass = 0; pass < 50'000; ++pass) {
        QString literal = digits(below(24));
        literal += below(2) ? u'.' + digits(below(26)) : QString();
        literal += digits(1);
        if (below(2)) {
            const int exponent = below(below(8) ? 30 : 400);
            literal += (below(2) ? u"e"_s : u"E-"_s) + QString::number(exponent);
        }
        bool isNumber = false;
        const double expected = literal.toDouble(&isNumber);
        const Answer answer = evaluate(literal);
        QVERIFY2(answer.isValue == isNumber, qPrintable(literal));
        QVERIFY2(!isNumber || isSame(answer.value, expected), qPrintable(literal));
    }
}

void tst_ExpressionParser::takesAnyNumberOfSigns_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("expected");
    QTest::newRow("10,000") << 10'000 << 3.0;
    QTest::newRow("10,001") << 10'001 << -3.0;
    QTest::newRow("1,000,001") << 1'000'001 << -3.0;
}

void tst_ExpressionParser::takesAnyNumberOfSigns()
{
    QFETCH(const int, count);
    QFETCH(const double, expected);

    QCOMPARE(evaluate(QString(count, u'-') + u'3').value, expected);
    QCOMPARE(evaluate(u"- + "_s.repeated(count) + u'3').value, expected);
    QCOMPARE(evaluate(QString(count, u'+') + u'3').value, 3.0);
    QCOMPARE(evaluate(QString(count, u'-')).error,
             u"Expected number, constant, or function at position %1"_s.arg(count + 1));
}

void tst_ExpressionParser::acceptsOrdinaryDepth_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<double>("expected");
    QTest::newRow("parentheses") << wrapped(u"("_s, 256, u"1"_s, u")"_s) << 1.0;
    QTest::newRow("calls") << wrapped(u"abs("_s, 256, u"1"_s, u")"_s) << 1.0;
    QTest::newRow("last arguments") << wrapped(u"max(1,"_s, 256, u"2"_s, u")"_s) << 2.0;
    QTest::newRow("powers") << u"1^"_s.repeated(256) + u'7' << 1.0;
    QTest::newRow("signed exponents") << u"1^-"_s.repeated(256) + u'7' << 1.0;
    QTest::newRow("one inside another") << wrapped(u"1^(-abs("_s, 85, u"7"_s, u"))"_s) << 1.0;
    QTest::newRow("sums") << u"1+"_s.repeated(100'000) + u'1' << 100'001.0;
    QTest::newRow("products") << u"1*"_s.repeated(100'000) + u'1' << 1.0;
    QTest::newRow("many groups") << u"(1)+"_s.repeated(100'000) + u"(1)"_s << 100'001.0;
    QTest::newRow("many calls") << u"abs(1)+"_s.repeated(100'000) + u'1' << 100'001.0;
    QTest::newRow("many powers") << u"1^1+"_s.repeated(100'000) + u'1' << 100'001.0;
}

void tst_ExpressionParser::acceptsOrdinaryDepth()
{
    QFETCH(const QString, input);
    QFETCH(const double, expected);

    const Answer answer = evaluate(input);
    QVERIFY2(answer.isValue, qPrintable(answer.error));
    QCOMPARE(answer.value, expected);
}

void tst_ExpressionParser::rejectsTooDeepNesting_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<int>("position");
    // The position is that of the operand on the 257th level.
    QTest::newRow("parentheses") << wrapped(u"("_s, 257, u"1"_s, u")"_s) << 258;
    QTest::newRow("open parentheses") << QString(10'000, u'(') << 258;
    QTest::newRow("calls") << wrapped(u"abs("_s, 257, u"1"_s, u")"_s) << 257 * 4 + 1;
    QTest::newRow("last arguments") << wrapped(u"max(1,"_s, 257, u"2"_s, u")"_s) << 256 * 6 + 5;
    QTest::newRow("powers") << u"1^"_s.repeated(257) + u'7' << 257 * 2 + 1;
    QTest::newRow("signed exponents") << u"1^-"_s.repeated(257) + u'7' << 257 * 3;
    QTest::newRow("powers with blanks") << u"1^ "_s.repeated(257) + u'7' << 257 * 3 + 1;
    QTest::newRow("unknown names") << wrapped(u"f("_s, 257, u"1"_s, u")"_s) << 257 * 2 + 1;
}

void tst_ExpressionParser::rejectsTooDeepNesting()
{
    QFETCH(const QString, input);
    QFETCH(const int, position);

    const Answer answer = evaluate(input);
    QVERIFY(!answer.isValue);
    QCOMPARE(answer.error, u"Expression nested too deeply at position %1"_s.arg(position));
}

void tst_ExpressionParser::countsTheDepthOfEachGroupSeparately()
{
    const QString group = wrapped(u"("_s, 200, u"1^1"_s, u")"_s);
    QCOMPARE(evaluate(group + u'+' + group + u"^1+max("_s + group + u',' + group + u')').value,
             3.0);
}

void tst_ExpressionParser::answersDeepTextOnASmallStack_data()
{
    QTest::addColumn<QString>("input");
    const int count = 1'000'000;
    QTest::newRow("parentheses") << wrapped(u"("_s, count, u"1"_s, u")"_s);
    QTest::newRow("open parentheses") << QString(count, u'(');
    QTest::newRow("closing parentheses") << QString(count, u')');
    QTest::newRow("calls") << wrapped(u"sqrt("_s, count, u"1"_s, u")"_s);
    QTest::newRow("unknown calls") << wrapped(u"f("_s, count, u"1"_s, u")"_s);
    QTest::newRow("first arguments") << wrapped(u"max("_s, count, u"2"_s, u",1)"_s);
    QTest::newRow("last arguments") << wrapped(u"max(1,"_s, count, u"2"_s, u")"_s);
    QTest::newRow("many arguments") << u"max("_s + u"1,"_s.repeated(count) + u"1)"_s;
    QTest::newRow("empty arguments") << wrapped(u"f(,"_s, count, QString(), u",,)"_s);
    QTest::newRow("minus signs") << QString(count, u'-') + u'1';
    QTest::newRow("plus signs") << QString(count, u'+') + u'1';
    QTest::newRow("signs before parentheses") << wrapped(u"-(+"_s, count, u"1"_s, u")"_s);
    QTest::newRow("powers") << u"1^"_s.repeated(count) + u'1';
    QTest::newRow("bare powers") << QString(count, u'^');
    QTest::newRow("signed exponents") << u"1^-"_s.repeated(count) + u'1';
    QTest::newRow("powers of unknown names") << u"f^"_s.repeated(count) + u'1';
    QTest::newRow("exponents in parentheses") << wrapped(u"2^("_s, count, u"1"_s, u")"_s);
    QTest::newRow("exponents in calls") << wrapped(u"2^sin("_s, count, u"1"_s, u")"_s);
    QTest::newRow("digits") << QString(count, u'7');
    QTest::newRow("decimals") << u"0."_s + QString(count, u'7');
    QTest::newRow("letters") << QString(count, u'x') + u"(1)"_s;
    QTest::newRow("blanks") << QString(count, u' ');
    QTest::newRow("products of sums") << wrapped(u"2*(1+"_s, count, u"1"_s, u")"_s);
}

void tst_ExpressionParser::answersDeepTextOnASmallStack()
{
    QFETCH(const QString, input);

    Answer answer;
    const std::unique_ptr<QThread> thread(
        QThread::create([&answer, &input] { answer = evaluate(input); }));
    thread->setStackSize(smallStackSize);
    thread->start();
    QVERIFY(thread->wait());
    QVERIFY(answer.isValue || answer.error.contains(" at position "_L1));
}

void tst_ExpressionParser::answersTenThousandLevels_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<bool>("isValue");

    QTest::newRow("parentheses: too deep") << wrapped(u"("_s, 10'000, u"1"_s, u")"_s) << false;
    QTest::newRow("calls: too deep") << wrapped(u"abs("_s, 10'000, u"1"_s, u")"_s) << false;
    QTest::newRow("powers: too deep") << u"1^"_s.repeated(10'000) + u'1' << false;
    QTest::newRow("signs: a value") << QString(10'000, u'-') + u'1' << true;
}

void tst_ExpressionParser::answersTenThousandLevels()
{
    QFETCH(const QString, input);
    QFETCH(const bool, isValue);

    const Answer answer = evaluate(input);
    QCOMPARE(answer.isValue, isValue);
    QCOMPARE(answer.error.startsWith("Expression nested too deeply at position "_L1), !isValue);
}

VASKEL_TEST(tst_ExpressionParser, QCoreApplication)
#include "tst_ExpressionParser.moc"
