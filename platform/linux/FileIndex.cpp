// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileIndex.h"

#include "platform/linux/HomeDatabase.h"
#include "platform/linux/PlocateText.h"

#include <QDeadlineTimer>
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

QStringList databaseArguments(QString path)
{
    return {u"--database"_s, path.replace(u'\\', "\\\\"_L1).replace(u':', "\\:"_L1)};
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
    const QStringList paths = plocatePaths(process->readAllStandardOutput());
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
    const QStringList arguments = plocateArguments(text, limit);
    const Answer answer = runPlocate(arguments, searchEnvironment(), deadline);
    return answer.error == Failed ? searchHomeDatabase(arguments, deadline) : answer;
}

} // namespace platform::fileindex
