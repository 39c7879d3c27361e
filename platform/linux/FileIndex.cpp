// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileIndex.h"

#include "platform/linux/HomeDatabase.h"

#include <QByteArrayList>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

#include <chrono>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace platform::fileindex {

namespace {

constexpr auto timeLimit = 2s;

enum Error : unsigned {
    CannotStart = 101,
    Failed = 102,
    TooSlow = 103,
    Building = 104,
    CannotBuild = 105,
};

HomeDatabase &homeDatabase()
{
    static HomeDatabase database;
    return database;
}

QString program()
{
    return QStandardPaths::findExecutable(u"plocate"_s);
}

// plocate takes brackets for a choice of letters and a backslash for a mark of its own.
QString pattern(QString word, bool isPath)
{
    const bool isWildcard = word.contains(u'*') || word.contains(u'?');
    word.replace(u'\\', "\\\\"_L1).replace(u'[', "\\["_L1).replace(u']', "\\]"_L1);
    if (isPath && isWildcard && !word.startsWith(u'/') && !word.startsWith(u'*')) {
        word.prepend("*/"_L1); // where the pattern must fit the path from its beginning
    }
    return word;
}

QStringList searchArguments(const QString &text, unsigned limit)
{
    const bool isPath = text.contains(u'/');
    QStringList arguments = {u"--null"_s, u"--ignore-case"_s, u"--limit"_s, QString::number(limit)};
    if (!isPath) {
        arguments.append(u"--basename"_s);
    }
    arguments.append(u"--"_s); // what follows is no option, whatever it begins with
    const QStringList words = text.simplified().split(u' ');
    for (const QString &word : words) {
        arguments.append(pattern(word, isPath));
    }
    return arguments;
}

QStringList databaseArguments(QString path)
{
    return {u"--database"_s, path.replace(u'\\', "\\\\"_L1).replace(u':', "\\:"_L1)};
}

// Empty for a name that is not valid Unicode.
QString decodedPath(const QByteArray &bytes)
{
    QString path = QFile::decodeName(bytes);
    return QFile::encodeName(path) == bytes ? path : QString();
}

QStringList decodedPaths(const QByteArray &output)
{
    QByteArrayList names = output.split('\0');
    names.removeLast(); // what is behind the last terminator
    QStringList paths;
    for (const QByteArray &name : std::as_const(names)) {
        paths.append(decodedPath(name));
    }
    return paths;
}

// A process that hangs on a dead disk outlives even its killing, and nobody can wait for that.
void abandon(std::unique_ptr<QProcess> process)
{
    QProcess *const left = process.release();
    QObject::connect(left, &QProcess::finished, left, &QObject::deleteLater);
    left->kill();
}

QProcessEnvironment searchEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // Without a locale for Unicode, letters beyond ASCII are refused.
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    return environment;
}

Answer ask(const QStringList &arguments, const QProcessEnvironment &environment,
           const QDeadlineTimer &deadline)
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment);
    process->setStandardInputFile(QProcess::nullDevice());
    process->start(program(), arguments, QIODevice::ReadOnly);
    if (!process->waitForFinished(static_cast<int>(deadline.remainingTime()))) {
        if (process->error() == QProcess::FailedToStart) {
            return {CannotStart, {}};
        }
        abandon(std::move(process));
        return {TooSlow, {}};
    }
    const QStringList paths = decodedPaths(process->readAllStandardOutput());
    // The exit status is the same for a failure and for no match.
    if (paths.isEmpty()
        && (process->exitStatus() != QProcess::NormalExit || process->exitCode() > 1
            || !process->readAllStandardError().isEmpty())) {
        return {Failed, {}};
    }
    return {{}, paths};
}

Answer askHomeDatabase(const QStringList &arguments, const QDeadlineTimer &deadline)
{
    switch (homeDatabase().prepare(deadline)) {
    case HomeDatabase::State::Building:
        return {Building, {}};
    case HomeDatabase::State::Failed:
        return {CannotBuild, {}};
    case HomeDatabase::State::Ready:
        break;
    }
    QProcessEnvironment environment = searchEnvironment();
    environment.remove(u"LOCATE_PATH"_s); // one database that fails makes plocate fail
    Answer answer =
        ask(databaseArguments(HomeDatabase::filePath()) + arguments, environment, deadline);
    if (answer.error == Failed) {
        HomeDatabase::discard(); // the next search builds it anew
    }
    return answer;
}

} // namespace

QString name()
{
    return program().isEmpty() ? QString() : u"plocate"_s;
}

Answer search(const QString &text, unsigned limit)
{
    const QDeadlineTimer deadline(timeLimit);
    const QStringList arguments = searchArguments(text, limit);
    const Answer answer = ask(arguments, searchEnvironment(), deadline);
    return answer.error == Failed ? askHomeDatabase(arguments, deadline) : answer;
}

} // namespace platform::fileindex
