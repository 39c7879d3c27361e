// SPDX-License-Identifier: GPL-3.0-or-later
//
// The cost of ExpressionParser compared with the work that any calculator needs: converting the
// literals to numbers and calling the mathematical functions.
#include "plugins/ExpressionParser.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <random>
#include <string>
#include <vector>

namespace {

struct UnaryCall
{
    double (*function)(double);
    double argument;
};

struct BinaryCall
{
    double (*function)(double, double);
    double first;
    double second;
};

struct Expression
{
    std::string text;
    double value = 0;
    std::vector<std::string> literals;
    std::vector<UnaryCall> unaryCalls;
    std::vector<BinaryCall> binaryCalls;
};

/// Generates expressions as users type them, and evaluates them at the same time to record every
/// literal and every function call.
class Writer
{
public:
    explicit Writer(std::mt19937 &random)
        : m_random(random)
    {
    }

    Expression write()
    {
        m_expression = {};
        m_isSpaced = chance(30);
        m_expression.value = writeSum(2);
        return m_expression;
    }

private:
    bool chance(int percent) { return below(100) < percent; }
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    void put(const std::string &token) { m_expression.text += token; }
    void putOperator(char symbol)
    {
        put(m_isSpaced ? std::string{' ', symbol, ' '} : std::string{symbol});
    }

    // A sum of at least this number of operands.
    double writeSum(int depth, int operands = 1)
    {
        double value = writeProduct(depth);
        for (int count = 1; count < operands || chance(35); ++count) {
            const bool isSum = chance(65);
            putOperator(isSum ? '+' : '-');
            const double operand = writeProduct(depth);
            value = isSum ? value + operand : value - operand;
        }
        return value;
    }

    double writeProduct(int depth)
    {
        double value = writePower(depth);
        while (chance(30)) {
            const char symbol = "******///%"[below(10)];
            putOperator(symbol);
            const double operand = writePower(depth);
            if (symbol == '*') {
                value *= operand;
            } else {
                value = symbol == '/' ? value / operand : call(std::fmod, value, operand);
            }
        }
        return value;
    }

    double writePower(int depth)
    {
        const bool isNegative = chance(4);
        put(isNegative ? "-" : "");
        double value = writeOperand(depth);
        if (chance(8)) {
            put("^");
            value = call(std::pow, value, writeLiteral(std::to_string(2 + below(9))));
        }
        return isNegative ? -value : value;
    }

    double writeOperand(int depth)
    {
        const int kind = depth > 0 ? below(100) : 0;
        if (kind < 75) {
            return writeLiteral(number());
        }
        if (kind < 78) {
            put(kind < 77 ? "pi" : "e");
            return kind < 77 ? std::numbers::pi : std::numbers::e;
        }
        return kind < 90 ? writeGroup(depth, 2) : writeFunction(depth);
    }

    double writeGroup(int depth, int operands)
    {
        put("(");
        const double value = writeSum(depth - 1, operands);
        put(")");
        return value;
    }

    double writeFunction(int depth)
    {
        switch (below(4)) {
        case 0:
            return writeSquareRoot(depth);
        case 1:
            return writeOfAngle();
        case 2:
            return writeOfOne(depth);
        default:
            return writeOfTwo(depth);
        }
    }

    double writeSquareRoot(int depth)
    {
        put("sqrt");
        return call(std::sqrt, writeGroup(depth, 1));
    }

    // An angle in radians, or in degrees with the conversion.
    double writeOfAngle()
    {
        static constexpr std::array<const char *, 3> names{"sin(", "cos(", "tan("};
        static constexpr std::array<double (*)(double), 3> functions{std::sin, std::cos, std::tan};
        const auto index = static_cast<unsigned>(below(3));
        put(names[index]);
        double angle = 0;
        if (chance(50)) {
            angle = writeLiteral(std::to_string(1 + below(360)));
            put("*pi/");
            angle = angle * std::numbers::pi / writeLiteral("180");
        } else {
            angle = writeLiteral(std::to_string(below(7)) + '.' + std::to_string(below(100)));
        }
        put(")");
        return call(functions[index], angle);
    }

    double writeOfOne(int depth)
    {
        static constexpr std::array<const char *, 6> names{"abs", "floor", "ceil",
                                                           "exp", "ln",    "log10"};
        static constexpr std::array<double (*)(double), 6> functions{
            std::fabs, std::floor, std::ceil, std::exp, std::log, std::log10};
        const auto index = static_cast<unsigned>(below(6));
        put(names[index]);
        return call(functions[index], writeGroup(depth, 1));
    }

    double writeOfTwo(int depth)
    {
        static constexpr std::array<const char *, 4> names{"min(", "max(", "pow(", "log("};
        static constexpr std::array<double (*)(double, double), 3> functions{std::fmin, std::fmax,
                                                                             std::pow};
        const auto index = static_cast<unsigned>(below(4));
        put(names[index]);
        const double first = writeSum(depth - 1);
        put(m_isSpaced ? ", " : ",");
        const double second = writeSum(depth - 1);
        put(")");
        return index < functions.size() ? call(functions[index], first, second)
                                        : call(std::log, first) / call(std::log, second);
    }

    // Mostly short integers and prices, sometimes a constant with many digits or an exponent.
    std::string number()
    {
        const int kind = below(100);
        if (kind < 55) {
            return std::to_string(1 + below(kind < 30 ? 100 : 10000));
        }
        if (kind < 85) {
            const std::string cents = std::to_string(100 + below(100)).substr(1);
            return std::to_string(below(1000)) + '.' + (chance(30) ? cents.substr(1) : cents);
        }
        if (kind < 93) {
            return "0." + std::to_string(1 + below(100000));
        }
        if (kind < 97) {
            return std::to_string(1 + below(9)) + '.' + std::to_string(below(1000000000));
        }
        return std::to_string(1 + below(9)) + '.' + std::to_string(below(1000))
               + (chance(50) ? "e" : "e-") + std::to_string(1 + below(20));
    }

    double writeLiteral(const std::string &text)
    {
        put(text);
        m_expression.literals.push_back(text);
        return std::strtod(text.c_str(), nullptr);
    }

    double call(double (*function)(double), double argument)
    {
        m_expression.unaryCalls.push_back({function, argument});
        return function(argument);
    }

    double call(double (*function)(double, double), double first, double second)
    {
        m_expression.binaryCalls.push_back({function, first, second});
        return function(first, second);
    }

    std::mt19937 &m_random;
    Expression m_expression;
    bool m_isSpaced = false;
};

struct Mix
{
    std::vector<QString> texts;
    std::vector<double> values;
    std::vector<std::string> literals;
    std::vector<UnaryCall> unaryCalls;
    std::vector<BinaryCall> binaryCalls;
};

Mix makeMix()
{
    std::mt19937 random(20240229);
    Writer writer(random);
    Mix mix;
    while (mix.texts.size() < 1000) {
        const Expression expression = writer.write();
        // The parser would stop before the last literal of an undefined expression.
        if (!std::isfinite(expression.value)) {
            continue;
        }
        mix.texts.push_back(QString::fromStdString(expression.text));
        mix.values.push_back(expression.value);
        mix.literals.insert(mix.literals.end(), expression.literals.begin(),
                            expression.literals.end());
        mix.unaryCalls.insert(mix.unaryCalls.end(), expression.unaryCalls.begin(),
                              expression.unaryCalls.end());
        mix.binaryCalls.insert(mix.binaryCalls.end(), expression.binaryCalls.begin(),
                               expression.binaryCalls.end());
    }
    return mix;
}

const Mix &mix()
{
    static const Mix made = makeMix();
    return made;
}

// Allows for rounding: the compiler may contract the arithmetic above.
bool isNear(double value, double expected)
{
    return std::abs(value - expected) <= 1e-9 * std::abs(expected);
}

void measured(benchmark::State &state)
{
    for (std::size_t index = 0; index < mix().texts.size(); ++index) {
        double value = 0;
        QString error;
        if (!ExpressionParser(mix().texts[index]).evaluate(value, error)
            || !isNear(value, mix().values[index])) {
            state.SkipWithError(qPrintable(mix().texts[index] + QLatin1Char(' ') + error));
            return;
        }
    }
    for ([[maybe_unused]] auto _ : state) {
        for (const QString &text : mix().texts) {
            double value = 0;
            QString error;
            benchmark::DoNotOptimize(ExpressionParser(text).evaluate(value, error));
            benchmark::DoNotOptimize(value);
        }
    }
}

void measureFloor(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        for (const std::string &literal : mix().literals) {
            benchmark::DoNotOptimize(std::strtod(literal.c_str(), nullptr));
        }
        for (const UnaryCall &call : mix().unaryCalls) {
            benchmark::DoNotOptimize(call.function(call.argument));
        }
        for (const BinaryCall &call : mix().binaryCalls) {
            benchmark::DoNotOptimize(call.function(call.first, call.second));
        }
    }
}

} // namespace

BENCHMARK(measured)->Name("ExpressionParser/measured");
BENCHMARK(measureFloor)->Name("ExpressionParser/floor");

BENCHMARK_MAIN();
