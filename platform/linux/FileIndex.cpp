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

QStringList searchArguments(const QString &text, unsigned limit)
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

QStringList databaseArguments(QString path)
{
    return {u"--database"_s, path.replace(u'\\', "\\\\"_L1).replace(u':', "\\:"_L1)};
}

// Returns an empty path for a name that is not valid Unicode.
QString decodedPath(const QByteArray &bytes)
{
    QString path = QFile::decodeName(bytes);
    return QFile::encodeName(path) == bytes ? path : QString();
}

QStringList decodedPaths(const QByteArray &output)
{
    QByteArrayList names = output.split('\0');
    names.removeLast(); // empty: it follows the last terminator
    QStringList paths;
    for (const QByteArray &name : std::as_const(names)) {
        paths.append(decodedPath(name));
    }
    return paths;
}

// Do not wait for the process: if it hangs on a dead disk, it does not even end when killed.
void killAndDeleteLater(std::unique_ptr<QProcess> process)
{
    QProcess *const killed = process.release();
    QObject::connect(killed, &QProcess::finished, killed, &QObject::deleteLater);
    killed->kill();
}

QProcessEnvironment searchEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // Without a Unicode locale, plocate refuses letters beyond ASCII.
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    return environment;
}

Answer runPlocate(const QStringList &arguments, const QProcessEnvironment &environment,
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
        killAndDeleteLater(std::move(process));
        return {TooSlow, {}};
    }
    const QStringList paths = decodedPaths(process->readAllStandardOutput());
    // A failure and a search without a match have the same exit status.
    if (paths.isEmpty()
        && (process->exitStatus() != QProcess::NormalExit || process->exitCode() > 1
            || !process->readAllStandardError().isEmpty())) {
        return {Failed, {}};
    }
    return {{}, paths};
}

Answer searchHomeDatabase(const QStringList &arguments, const QDeadlineTimer &deadline)
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
    environment.remove(u"LOCATE_PATH"_s); // plocate fails if one of its databases does
    Answer answer =
        runPlocate(databaseArguments(HomeDatabase::filePath()) + arguments, environment, deadline);
    if (answer.error == Failed) {
        HomeDatabase::discard(); // the next search rebuilds it
    }
    return answer;
}

} // namespace

QString name()
{
    return program().isEmpty() ? QString() : u"plocate"_s;
}

void watch(QObject *context, const std::function<void()> &completed)
{
    homeDatabase().watch(context, completed);
}

Answer search(const QString &text, unsigned limit)
{
    const QDeadlineTimer deadline(timeLimit);
    const QStringList arguments = searchArguments(text, limit);
    const Answer answer = runPlocate(arguments, searchEnvironment(), deadline);
    return answer.error == Failed ? searchHomeDatabase(arguments, deadline) : answer;
}

} // namespace platform::fileindex
