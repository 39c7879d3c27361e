// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppSearch.h"

#include "fuzz/Fuzz.h"
#include "launcher/AppEntry.h"

// The first line of the input is the text of the box, the rest the name in a row.

namespace {

using fuzz::check;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = fuzz::textOf(data, size);
    const qsizetype end = text.indexOf(u'\n');
    const QString query = text.left(end);
    const QString name = end < 0 ? QString() : text.mid(end + 1);

    const AppEntry entry(name, QStringLiteral("/path"), QString(), QString());
    const bool isBlank = query.trimmed().isEmpty();
    const bool isFound = !searchApps({entry}, query).isEmpty();
    const QBitArray marks = matchInName(name, query);
    check(marks.size() == name.size(), "another number of marks than characters");
    check(!isBlank || (isFound && marks.count(true) == 0), "a blank text is a search");
    check(isBlank || isFound == (marks.count(true) > 0), "the marks do not show what was found");
    check(matchInText(name, query).size() == name.size(), "another number of marks");
    return 0;
}
