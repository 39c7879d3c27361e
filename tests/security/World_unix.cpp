// SPDX-License-Identifier: GPL-3.0-or-later
#include "security/World.h"

#include "platform/linux/Plocate.h"
#include "support/TestHome.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace names {

const qsizetype leastFileNames = 200;
const qsizetype updatesAtATime = 50;

namespace {

QString markOf(const QString &name)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha1).toHex());
}

QString startsFolder()
{
    return testhome::path() + "/starts"_L1;
}

// A value of a desktop entry.
QString escaped(QString text)
{
    return text.replace(u'\\', uR"(\\)"_s).replace(u'\n', uR"(\n)"_s).replace(u' ', uR"(\s)"_s);
}

// An argument in an Exec line, before the escapes of its value.
QString quoted(const QString &argument)
{
    QString text;
    for (const QChar character : argument) {
        if (u"\"`$\\"_s.contains(character)) {
            text += u'\\';
        }
        text += character == u'%' ? u"%%"_s : QString(character);
    }
    return u'"' + text + u'"';
}

QString recorder()
{
    QString path = testhome::writeFile(u"bin/record"_s, "#!/bin/sh\n"
                                                        "printf '%s' \"$3\" >\"$1/$2.part\"\n"
                                                        "mv \"$1/$2.part\" \"$1/$2.$$\"\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

} // namespace

bool isFileName(const QString &name)
{
    return !name.contains(u'/');
}

QString nativePath(const QString &path)
{
    return path;
}

bool isSameFile(const QString &opened, const QString &path)
{
    return opened == path;
}

void installIndex(const QStringList &)
{
    plocate::install();
    plocate::updateSystemDatabase();
}

QStringList startable(const QStringList &names)
{
    return names;
}

QStringList updatable(const QStringList &names)
{
    return names;
}

QString installLink(const QString &name)
{
    static QString program;
    QDir().mkpath(startsFolder());
    if (!QFile::exists(program)) {
        program = recorder();
    }
    const QStringList arguments = {program, startsFolder(), markOf(name), name};
    QString line;
    for (const QString &argument : arguments) {
        line += quoted(argument) + u' ';
    }
    const QString entry = u"[Desktop Entry]\nType=Application\nName=%1\nExec=%2\n"_s.arg(
        escaped(name), escaped(line.trimmed()));
    return testhome::writeFile("data/applications/"_L1 + name + ".desktop"_L1, entry.toUtf8());
}

bool isStarted(const QString &name)
{
    const QStringList marks = QDir(startsFolder()).entryList({markOf(name) + ".[0-9]*"_L1});
    QFile mark(startsFolder() + u'/' + marks.value(0));
    return marks.size() == 1 && mark.open(QIODevice::ReadOnly)
           && QString::fromUtf8(mark.readAll()) == name;
}

qsizetype startCount()
{
    return QDir(startsFolder()).entryList(QDir::Files).size();
}

QByteArray newProgram()
{
    return "#!/bin/sh\nprintf x >\"$0.started\"\n";
}

bool isUpdated(const QString &program)
{
    QFile file(program);
    return QFile::exists(program + ".started"_L1) && file.open(QIODevice::ReadOnly)
           && file.readAll() == newProgram();
}

} // namespace names
