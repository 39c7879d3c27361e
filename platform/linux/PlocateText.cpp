// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/PlocateText.h"

#include <QByteArrayList>
#include <QFile>

#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// plocate treats brackets as a set of characters and the backslash as an escape character.
QString pattern(QString word, bool isPath)
{
    const bool isWildcard = word.contains(u'*') || word.contains(u'?');
    word.replace(u'\\', "\\\\"_L1).replace(u'[', "\\["_L1).replace(u']', "\\]"_L1);
    if (isPath && isWildcard && !word.startsWith(u'/') && !word.startsWith(u'*')) {
        word.prepend("*/"_L1); // a pattern must match the path from its start
    }
    return word;
}

// Returns an empty path for a name that is not valid Unicode.
QString decodedPath(const QByteArray &bytes)
{
    QString path = QFile::decodeName(bytes);
    return QFile::encodeName(path) == bytes ? path : QString();
}

} // namespace

QStringList plocateArguments(const QString &text, unsigned limit)
{
    const bool isPath = text.contains(u'/');
    QStringList arguments = {u"--null"_s, u"--ignore-case"_s, u"--limit"_s, QString::number(limit)};
    if (!isPath) {
        arguments.append(u"--basename"_s);
    }
    arguments.append(u"--"_s); // a word may begin with "-"
    const QStringList words = text.simplified().split(u' ');
    for (const QString &word : words) {
        arguments.append(pattern(word, isPath));
    }
    return arguments;
}

QStringList plocatePaths(const QByteArray &output)
{
    QByteArrayList names = output.split('\0');
    names.removeLast(); // empty: it follows the last terminator
    QStringList paths;
    for (const QByteArray &name : std::as_const(names)) {
        paths.append(decodedPath(name));
    }
    return paths;
}

} // namespace platform
