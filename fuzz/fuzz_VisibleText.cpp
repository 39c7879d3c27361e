// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/VisibleText.h"

#include "fuzz/Fuzz.h"

// The input is the text of a row.

namespace {

using fuzz::check;

// By code points, not by the categories that visibleText() uses.
bool changesTheLayout(char16_t c)
{
    return c < 0x20 || (c >= 0x7f && c < 0xa0) || c == 0x2028 || c == 0x2029
           || (c >= 0x202a && c <= 0x202e) || (c >= 0x2066 && c <= 0x2069);
}

QString withoutPlainText(const QString &text)
{
    QString special;
    for (const QChar c : text) {
        if (changesTheLayout(c.unicode())) {
            special += c;
        }
    }
    return special;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = fuzz::textOf(data, size);
    const QString visible = visibleText(text);
    check(withoutPlainText(visible).isEmpty(), "a character that changes the layout");
    check(!withoutPlainText(text).isEmpty() || visible == text, "a plain text has changed");
    check(visibleText(visible) == visible, "a visible text has changed");
    return 0;
}
