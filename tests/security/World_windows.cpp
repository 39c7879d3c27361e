// SPDX-License-Identifier: GPL-3.0-or-later
#include "security/World.h"

#include "platform/StartMenu.h"
#include "platform/windows/EverythingLibrary.h"
#include "platform/windows/Recording.h"
#include "platform/windows/ShellLink.h"
#include "support/TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace names {

const qsizetype leastFileNames = 100;
const qsizetype updatesAtATime = 4;

namespace {

// Starting a program takes some tenths of a second under wine.
constexpr qsizetype startsInAll = 8;

QString marksFile()
{
    return testhome::path() + "/starts.txt"_L1;
}

bool isAscii(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

// Some of each kind.
QStringList selection(const QStringList &names)
{
    QStringList some;
    for (qsizetype index = 0; index < startsInAll; ++index) {
        some.append(names.at(index * names.size() / startsInAll));
    }
    return some;
}

} // namespace

bool isFileName(const QString &name)
{
    const bool hasInvalid = std::any_of(name.begin(), name.end(), [](QChar c) {
        return c.unicode() < 0x20 || u"\"*/:<>?\\|"_s.contains(c);
    });
    return !hasInvalid && !name.endsWith(u' ') && !name.endsWith(u'.');
}

QString nativePath(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

// A name without a dot gets one, which Windows ignores.
bool isSameFile(const QString &opened, const QString &path)
{
    const QString plain = QDir::fromNativeSeparators(path);
    return opened == plain || opened == plain + u'.';
}

void installIndex(const QStringList &paths)
{
    EverythingTest_SetFiles(qUtf16Printable(QDir::toNativeSeparators(paths.join(u'\n'))));
}

QStringList startable(const QStringList &names)
{
    return selection(names);
}

// docs/SECURITY.md: the script is read in the code page of the system, and expands variables.
QStringList updatable(const QStringList &names)
{
    QStringList plain = names;
    plain.removeIf([](const QString &name) { return name.contains(u'%') || !isAscii(name); });
    return selection(plain);
}

QString installLink(const QString &name)
{
    static bool isFirst = true;
    if (isFirst) {
        recording::makeEmptyStartMenu();
        isFirst = false;
    }
    QString path = platform::startMenuRoots().constFirst() + u'/' + name + ".lnk"_L1;
    const QString arguments = u"\"%1\" \"%2\""_s.arg(marksFile(), name);
    const ShellLink link{recording::program(), arguments, {}, {}};
    if (!link.write(path)) {
        qFatal("cannot write %s", qUtf8Printable(path));
    }
    return path;
}

bool isStarted(const QString &name)
{
    const QList<QStringList> starts = recording::starts(marksFile());
    return std::any_of(starts.begin(), starts.end(), [&name](const QStringList &start) {
        return start.mid(2) == QStringList{name};
    });
}

qsizetype startCount()
{
    return recording::starts(marksFile()).size();
}

QByteArray newProgram()
{
    QFile program(recording::program());
    if (!program.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s", qUtf8Printable(program.fileName()));
    }
    return program.readAll();
}

bool isUpdated(const QString &program)
{
    QFile file(program);
    return !recording::starts(program + ".txt"_L1).isEmpty() && file.open(QIODevice::ReadOnly)
           && file.readAll() == newProgram();
}

} // namespace names
