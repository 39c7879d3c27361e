// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringView>

/// Evaluates an arithmetic expression while parsing it by recursive descent.
///
/// The operators from lowest to highest precedence: `+ -`, `* / %`, prefix signs, `^`. The last is
/// right-associative, and its exponent may have signs. Operands are decimal numbers, the constants
/// pi and e, parenthesised expressions and calls such as `sqrt(2)`. Names ignore case; angles are
/// in radians. More than 256 nested parentheses and exponents are an error; signs have no limit.
class ExpressionParser
{
public:
    /// The text is not copied and must outlive the parser.
    explicit ExpressionParser(const QString &input);

    /// Returns true and sets `value` to the finite result, or returns false and sets `error` to the
    /// first error, as "%1 at position %2" in English. The position is where parsing stopped, in
    /// UTF-16 units from 1. The other argument is not changed. May be called again.
    bool evaluate(double &value, QString &error);

private:
    double parseExpression();
    double parseTerm();
    double parseUnary();
    double parsePower();
    double parsePrimary();
    double parseNumber();
    double parseName();
    QList<double> parseArguments();
    double callFunction(const QString &name, const QList<double> &arguments);
    template <double (ExpressionParser::*level)()> double descend();

    char16_t next() const;
    void skipSpaces();
    bool skipDigits();
    QString takeName();
    bool match(char16_t character);
    void fail(QStringView message);

    const QString &m_input;
    qint32 m_position = 0;
    QString m_error;
    int m_depth = 0;
};
