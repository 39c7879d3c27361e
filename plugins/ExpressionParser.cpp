// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/ExpressionParser.h"

#include <cfloat>
#include <cmath>
#include <numbers>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

// A level takes less than 1 KiB of stack, even in a debug build. The smallest stack is that of the
// main thread on Windows: 1 MiB, which the event loop needs, too.
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

// Parses a literal of at most 15 characters without an exponent, faster than
// QStringView::toDouble(). A double holds both its digits and the power of ten exactly, so the
// division rounds as the full conversion does, unless the compiler computes it in a wider type.
std::optional<double> shortNumber(QStringView literal)
{
    constexpr double powersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                      1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    if (FLT_EVAL_METHOD != 0 || literal.size() > 15) {
        return {};
    }
    qint64 digits = 0;
    qsizetype point = literal.size() - 1;
    for (qsizetype index = 0; index < literal.size(); ++index) {
        const char16_t character = literal[index].unicode();
        if (character == u'.') {
            point = index;
        } else if (character >= u'0' && character <= u'9') {
            digits = digits * 10 + (character - u'0');
        } else {
            return {};
        }
    }
    return static_cast<double>(digits) / powersOfTen[literal.size() - 1 - point];
}

} // namespace

ExpressionParser::ExpressionParser(const QString &input)
    : m_input(input)
{
}

// Returns a null character at the end of the text; no token starts with one.
inline char16_t ExpressionParser::next() const
{
    return m_position < m_input.size() ? m_input[m_position].unicode() : u'\0';
}

void ExpressionParser::skipSpaces()
{
    while (QChar::isSpace(next())) {
        ++m_position;
    }
}

bool ExpressionParser::match(char16_t character)
{
    skipSpaces();
    if (next() != character) {
        return false;
    }
    ++m_position;
    return true;
}

// All recursion of the grammar goes through this function, so it can limit the depth.
template <double (ExpressionParser::*level)()> double ExpressionParser::descend()
{
    if (m_depth == maximumDepth) {
        fail(u"Expression nested too deeply");
        return 0.0;
    }
    ++m_depth;
    const double value = (this->*level)();
    --m_depth;
    return value;
}

bool ExpressionParser::evaluate(double &value, QString &error)
{
    m_position = 0;
    m_error.clear();
    const double result = parseExpression();
    skipSpaces();
    if (m_position < m_input.size()) {
        fail(u"Unexpected token");
    }
    if (!std::isfinite(result)) {
        fail(u"Result is not finite");
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
        skipSpaces();
        const char16_t symbol = next();
        if (symbol != u'+' && symbol != u'-') {
            break;
        }
        ++m_position;
        const double operand = parseTerm();
        value = symbol == u'+' ? value + operand : value - operand;
    }
    return value;
}

double ExpressionParser::parseTerm()
{
    double value = parseUnary();
    while (m_error.isEmpty()) {
        skipSpaces();
        const char16_t symbol = next();
        if (symbol != u'*' && symbol != u'/' && symbol != u'%') {
            break;
        }
        ++m_position;
        const double operand = parseUnary();
        if (symbol == u'*') {
            value *= operand;
        } else if (operand == 0.0) {
            fail(u"Division by zero");
        } else {
            value = symbol == u'/' ? value / operand : std::fmod(value, operand);
        }
    }
    return value;
}

double ExpressionParser::parseUnary()
{
    // A loop, so that any number of signs needs no stack.
    bool isNegated = false;
    skipSpaces();
    for (char16_t symbol = next(); symbol == u'-' || symbol == u'+'; symbol = next()) {
        isNegated ^= symbol == u'-';
        ++m_position;
        skipSpaces();
    }
    const double value = parsePower();
    return isNegated ? -value : value;
}

double ExpressionParser::parsePower()
{
    const double base = parsePrimary();
    return match(u'^') ? std::pow(base, descend<&ExpressionParser::parseUnary>()) : base;
}

double ExpressionParser::parsePrimary()
{
    if (match(u'(')) {
        const double value = descend<&ExpressionParser::parseExpression>();
        if (!match(u')')) {
            fail(u"Expected ')'");
        }
        return value;
    }
    if (QChar::isDigit(next()) || next() == u'.') {
        return parseNumber();
    }
    if (QChar::isLetter(next()) || next() == u'_') {
        return parseName();
    }
    fail(u"Expected number, constant, or function");
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
        fail(u"Invalid number");
        return 0.0;
    }
    if (next() == u'e' || next() == u'E') {
        ++m_position;
        if (next() == u'+' || next() == u'-') {
            ++m_position;
        }
        if (!skipDigits()) {
            fail(u"Invalid exponent");
        }
    }
    const QStringView literal = QStringView(m_input).sliced(start, m_position - start);
    if (const std::optional<double> value = shortNumber(literal)) {
        return *value;
    }
    bool isValid = false;
    const double value = literal.toDouble(&isValid);
    if (!isValid) {
        fail(u"Invalid number");
    }
    return value;
}

double ExpressionParser::parseName()
{
    const QString name = takeName();
    if (name == "pi"_L1) {
        return std::numbers::pi;
    }
    if (name == "e"_L1) {
        return std::numbers::e;
    }
    if (!match(u'(')) {
        fail(u"Expected '(' after function name");
        return 0.0;
    }
    return callFunction(name, parseArguments());
}

// Also consumes the closing parenthesis.
QList<double> ExpressionParser::parseArguments()
{
    QList<double> arguments;
    skipSpaces();
    if (next() != u')') {
        do {
            arguments.append(descend<&ExpressionParser::parseExpression>());
        } while (match(u','));
    }
    if (!match(u')')) {
        fail(u"Expected ')'");
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

bool ExpressionParser::skipDigits()
{
    const qint32 start = m_position;
    while (QChar::isDigit(next())) {
        ++m_position;
    }
    return m_position > start;
}

QString ExpressionParser::takeName()
{
    const qint32 start = m_position;
    while (QChar::isLetterOrNumber(next()) || next() == u'_') {
        ++m_position;
    }
    return m_input.sliced(start, m_position - start).toLower();
}

void ExpressionParser::fail(QStringView message)
{
    // Parsing continues after an error; later errors are only its consequences.
    if (m_error.isEmpty()) {
        m_error = message.toString();
    }
}
