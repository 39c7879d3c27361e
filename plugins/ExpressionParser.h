// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringView>

/// Computes one line of arithmetic while reading it, by recursive descent.
///
/// From loosest to tightest: `+ -`, then `* / %`, then prefix signs, then `^`, which groups from
/// the right and takes a signed exponent. Operands are decimal numbers, the constants pi and e,
/// parenthesised expressions and calls such as `sqrt(2)`. Names ignore case, angles are radians.
/// Nesting deeper than 256 parentheses and exponents is an error; signs stack without limit.
class ExpressionParser
{
public:
    /// The text is not copied and must outlive the parser.
    explicit ExpressionParser(const QString &input);

    /// True: value holds the finite result. False: error holds the first error, as "%1 at position
    /// %2" in English, the position being where reading came to rest, in UTF-16 units from 1. The
    /// other output stays untouched. May be called again.
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
