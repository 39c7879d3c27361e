// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/ExpressionParser.h"

#include <QStringView>

#include <cmath>
#include <numbers>

using namespace Qt::StringLiterals;

namespace {

// A level of parentheses takes about half a kibibyte of stack in a release build and a few times as
// much in a debug build; the smallest stack to fit into is the one megabyte of Windows' main
// thread.
constexpr int maximumDepth = 256;

struct UnaryFunction
{
    QLatin1StringView name;
    double (*call)(double);
};

constexpr UnaryFunction unaryFunctions[] = {
    {"sqrt"_L1, std::sqrt}, {"sin"_L1, std::sin},     {"cos"_L1, std::cos},   {"tan"_L1, std::tan},
    {"abs"_L1, std::fabs},  {"floor"_L1, std::floor}, {"ceil"_L1, std::ceil}, {"exp"_L1, std::exp},
    {"ln"_L1, std::log},    {"log10"_L1, std::log10},
};

double logarithm(double value, double base)
{
    return std::log(value) / std::log(base);
}

struct BinaryFunction
{
    QLatin1StringView name;
    double (*call)(double, double);
};

constexpr BinaryFunction binaryFunctions[] = {
    {"log"_L1, logarithm},
    {"min"_L1, std::fmin},
    {"max"_L1, std::fmax},
    {"pow"_L1, std::pow},
};

} // namespace

ExpressionParser::ExpressionParser(const QString &input)
    : m_input(input)
{
}

bool ExpressionParser::evaluate(double &value, QString &error)
{
    m_position = 0;
    m_error.clear();
    const double result = parseExpression();
    skipSpaces();
    if (m_position < m_input.size()) {
        fail(u"Unexpected token"_s);
    }
    if (!std::isfinite(result)) {
        fail(u"Result is not finite"_s);
    }
    if (!m_error.isEmpty()) {
        error = u"%1 at position %2"_s.arg(m_error, QString::number(m_position + 1));
        return false;
    }
    value = result;
    return true;
}

double ExpressionParser::parseExpression()
{
    double value = parseTerm();
    while (m_error.isEmpty()) {
        if (match(u'+')) {
            value += parseTerm();
        } else if (match(u'-')) {
            value -= parseTerm();
        } else {
            break;
        }
    }
    return value;
}

double ExpressionParser::parseTerm()
{
    double value = parseUnary();
    while (m_error.isEmpty()) {
        if (match(u'*')) {
            value *= parseUnary();
            continue;
        }
        const bool isDivision = match(u'/');
        if (!isDivision && !match(u'%')) {
            break;
        }
        const double divisor = parseUnary();
        if (divisor == 0.0) {
            fail(u"Division by zero"_s);
        } else {
            value = isDivision ? value / divisor : std::fmod(value, divisor);
        }
    }
    return value;
}

double ExpressionParser::parseUnary()
{
    // A loop, since signs stack without limit and need not cost any stack.
    bool isNegated = false;
    for (;;) {
        if (match(u'-')) {
            isNegated = !isNegated;
        } else if (!match(u'+')) {
            break;
        }
    }
    const double value = parsePower();
    return isNegated ? -value : value;
}

double ExpressionParser::parsePower()
{
    const double base = parsePrimary();
    return match(u'^') ? std::pow(base, descend(&ExpressionParser::parseUnary)) : base;
}

double ExpressionParser::parsePrimary()
{
    if (match(u'(')) {
        const double value = descend(&ExpressionParser::parseExpression);
        if (!match(u')')) {
            fail(u"Expected ')'"_s);
        }
        return value;
    }
    if (next().isDigit() || next() == u'.') {
        return parseNumber();
    }
    if (next().isLetter() || next() == u'_') {
        return parseName();
    }
    fail(u"Expected number, constant, or function"_s);
    return 0.0;
}

double ExpressionParser::parseNumber()
{
    const qint32 start = m_position;
    bool hasDigits = skipDigits();
    if (next() == u'.') {
        ++m_position;
        hasDigits |= skipDigits();
    }
    if (!hasDigits) {
        fail(u"Invalid number"_s);
        return 0.0;
    }
    if (next() == u'e' || next() == u'E') {
        ++m_position;
        if (next() == u'+' || next() == u'-') {
            ++m_position;
        }
        if (!skipDigits()) {
            fail(u"Invalid exponent"_s);
        }
    }
    bool isValid = false;
    const double value = QStringView(m_input).sliced(start, m_position - start).toDouble(&isValid);
    if (!isValid) {
        fail(u"Invalid number"_s);
    }
    return value;
}

double ExpressionParser::parseName()
{
    const qint32 start = m_position;
    while (next().isLetterOrNumber() || next() == u'_') {
        ++m_position;
    }
    const QString name = m_input.sliced(start, m_position - start).toLower();
    if (name == "pi"_L1) {
        return std::numbers::pi;
    }
    if (name == "e"_L1) {
        return std::numbers::e;
    }
    if (!match(u'(')) {
        fail(u"Expected '(' after function name"_s);
        return 0.0;
    }
    return callFunction(name, parseArguments());
}

// Reads up to and including the closing parenthesis.
QList<double> ExpressionParser::parseArguments()
{
    QList<double> arguments;
    skipSpaces();
    if (next() != u')') {
        do {
            arguments.append(descend(&ExpressionParser::parseExpression));
        } while (match(u','));
    }
    if (!match(u')')) {
        fail(u"Expected ')'"_s);
    }
    return arguments;
}

double ExpressionParser::callFunction(const QString &name, const QList<double> &arguments)
{
    for (const UnaryFunction &function : unaryFunctions) {
        if (name == function.name) {
            if (arguments.size() == 1) {
                return function.call(arguments[0]);
            }
            fail(u"Function '%1' expects one argument"_s.arg(name));
            return 0.0;
        }
    }
    if (name == "log"_L1 && arguments.size() == 1) {
        return std::log(arguments[0]);
    }
    for (const BinaryFunction &function : binaryFunctions) {
        if (name == function.name) {
            if (arguments.size() == 2) {
                return function.call(arguments[0], arguments[1]);
            }
            fail(u"Function '%1' expects two arguments"_s.arg(name));
            return 0.0;
        }
    }
    fail(u"Unknown function '%1'"_s.arg(name));
    return 0.0;
}

// Every way by which the grammar comes back to itself leads through here.
double ExpressionParser::descend(double (ExpressionParser::*level)())
{
    if (m_depth == maximumDepth) {
        fail(u"Expression nested too deeply"_s);
        return 0.0;
    }
    ++m_depth;
    const double value = (this->*level)();
    --m_depth;
    return value;
}

// A null character at the end of the text: no token starts with one.
QChar ExpressionParser::next() const
{
    return m_position < m_input.size() ? m_input[m_position] : QChar();
}

void ExpressionParser::skipSpaces()
{
    while (next().isSpace()) {
        ++m_position;
    }
}

bool ExpressionParser::skipDigits()
{
    const qint32 start = m_position;
    while (next().isDigit()) {
        ++m_position;
    }
    return m_position > start;
}

bool ExpressionParser::match(QChar character)
{
    skipSpaces();
    if (next() != character) {
        return false;
    }
    ++m_position;
    return true;
}

void ExpressionParser::fail(const QString &message)
{
    // The descent goes on after an error; what it finds then is only a consequence.
    if (m_error.isEmpty()) {
        m_error = message;
    }
}
