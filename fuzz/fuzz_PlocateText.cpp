// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/PlocateText.h"

#include "fuzz/Fuzz.h"

#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

// The input is the output of plocate, and also the text of a search.

namespace {

using fuzz::check;

// The text that a pattern without wildcards stands for; a backslash precedes each special
// character.
QString unescaped(const QString &pattern)
{
    QString text;
    for (qsizetype index = 0; index < pattern.size(); ++index) {
        if (pattern.at(index) == u'\\') {
            ++index;
            check(index < pattern.size(), "a backslash without a character");
        } else {
            check(pattern.at(index) != u'[' && pattern.at(index) != u']', "a set of characters");
        }
        text += pattern.at(index);
    }
    return text;
}

void checkPaths(const QByteArray &output)
{
    const QStringList paths = platform::plocatePaths(output);
    check(paths.size() == output.count('\0'), "another number of paths");
    qsizetype begin = 0;
    for (const QString &path : paths) {
        const QByteArray name = output.sliced(begin, output.indexOf('\0', begin) - begin);
        check(path.isEmpty() || QFile::encodeName(path) == name, "a path of another file");
        begin += name.size() + 1;
    }
}

void checkArguments(const QString &text)
{
    const QStringList arguments = platform::plocateArguments(text, 50);
    const qsizetype end = arguments.indexOf(u"--"_s);
    check(end >= 4 && end <= 5, "no end of the options");
    check(arguments.contains(u"--basename"_s) != text.contains(u'/') || end == 5,
          "names and paths are confused");
    const QStringList words = text.simplified().split(u' ');
    check(arguments.size() - end - 1 == words.size(), "another number of words");
    for (qsizetype index = 0; index < words.size(); ++index) {
        const QString word = unescaped(arguments.at(end + 1 + index));
        check(word == words.at(index) || word == "*/"_L1 + words.at(index), "another word");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    checkPaths(fuzz::bytesOf(data, size));
    checkArguments(fuzz::textOf(data, size));
    return 0;
}
