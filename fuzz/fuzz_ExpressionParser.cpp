// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/ExpressionParser.h"

#include "fuzz/Fuzz.h"

#include <QString>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

using namespace Qt::StringLiterals;

namespace {

using fuzz::check;

struct Answer
{
    bool isValue = false;
    double value = 0.5;
    QString message;
    qint64 position = 0;
};

Answer evaluate(const QString &text)
{
    Answer answer;
    QString error;
    answer.isValue = ExpressionParser(text).evaluate(answer.value, error);
    if (answer.isValue) {
        check(std::isfinite(answer.value), "a value that is not finite");
        check(error.isEmpty(), "an error beside a value");
        return answer;
    }
    check(answer.value == 0.5, "a value beside an error");
    const auto marker = error.lastIndexOf(" at position "_L1);
    check(marker > 0, "an error without a position");
    answer.message = error.first(marker);
    answer.position = error.sliced(marker + 13).toLongLong();
    check(answer.position >= 1 && answer.position <= text.size() + 1, "a position out of range");
    return answer;
}

bool isSame(double left, double right)
{
    return std::bit_cast<quint64>(left) == std::bit_cast<quint64>(right);
}

void checkLeadingBlank(const QString &text, const Answer &answer)
{
    const Answer shifted = evaluate(u' ' + text);
    check(shifted.isValue == answer.isValue, "a leading blank changed the outcome");
    check(isSame(shifted.value, answer.value), "a leading blank changed the value");
    check(shifted.message == answer.message, "a leading blank changed the message");
    check(answer.isValue || shifted.position == answer.position + 1,
          "a leading blank did not move the position by one");
}

void checkNegatedGroup(const QString &text, const Answer &answer)
{
    const Answer negated = evaluate(u"-("_s + text + u')');
    if (answer.isValue && negated.message != "Expression nested too deeply"_L1) {
        check(negated.isValue && isSame(negated.value, -answer.value), "a group lost its value");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = fuzz::textOf(data, size);
    const Answer answer = evaluate(text);
    checkLeadingBlank(text, answer);
    checkNegatedGroup(text, answer);
    return 0;
}
