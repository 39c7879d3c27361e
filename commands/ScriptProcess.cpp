// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/ScriptProcess.h"

#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maximumErrors = 4096; // bytes of the standard error that are kept

} // namespace

ScriptProcess::ScriptProcess(const CommandFile &file, QObject *parent)
    : QObject(parent)
    , m_file(file)
{
    m_tree.prepare(m_process);
    m_process.setWorkingDirectory(file.folder);
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_timeout.setSingleShot(true);
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &ScriptProcess::readOutput);
    connect(&m_process, &QProcess::readyReadStandardError, this, &ScriptProcess::readErrors);
    connect(&m_process, &QProcess::errorOccurred, this, &ScriptProcess::handleError);
    connect(&m_process, &QProcess::finished, this, &ScriptProcess::handleEnd);
    connect(&m_timeout, &QTimer::timeout, this, [this] {
        finish(tr("%1 has not answered within %2 s")
                   .arg(m_file.exec.first(), QString::number(m_file.timeoutMs / 1000.0)));
    });
}

ScriptProcess::~ScriptProcess()
{
    m_process.disconnect(this);
    m_tree.end(m_process);
    m_process.waitForFinished(); // QProcess would wait too, and log that it has to
}

void ScriptProcess::start(const QString &query)
{
    QStringList arguments = m_file.exec;
    const QString program = m_file.programPath(arguments.takeFirst());
    arguments.replaceInStrings(u"{query}"_s, query);
    m_timeout.start(m_file.timeoutMs);
    m_process.start(program, arguments, QIODevice::ReadOnly);
}

void ScriptProcess::abandon()
{
    m_isFinished = true;
    m_timeout.stop();
    m_process.disconnect(this);
    m_tree.end(m_process);
    // Deleting a QProcess waits for the end of its program.
    if (m_process.state() == QProcess::NotRunning) {
        deleteLater();
    } else {
        connect(&m_process, &QProcess::finished, this, &QObject::deleteLater);
        connect(&m_process, &QProcess::errorOccurred, this, &QObject::deleteLater);
    }
}

void ScriptProcess::readOutput()
{
    m_output += m_process.readAllStandardOutput();
    if (m_output.size() > maximumOutput) {
        finish(tr("%1 has printed more than 1 MiB").arg(m_file.exec.first()));
    }
}

void ScriptProcess::readErrors()
{
    m_errors = (m_errors + m_process.readAllStandardError()).right(maximumErrors);
}

void ScriptProcess::handleError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart) { // finished() does not follow
        finish(tr("%1 cannot be started").arg(m_file.exec.first()), reasonOfFailedStart());
    }
}

void ScriptProcess::handleEnd(int exitCode, QProcess::ExitStatus status)
{
    readErrors();
    readOutput();
    if (status == QProcess::CrashExit) {
        finish(tr("%1 has crashed").arg(m_file.exec.first()), lastErrorLine());
    } else if (exitCode != 0) {
        finish(
            tr("%1 has ended with status %2").arg(m_file.exec.first(), QString::number(exitCode)),
            lastErrorLine());
    } else {
        finish({});
    }
}

void ScriptProcess::finish(const QString &error, const QString &details)
{
    if (m_isFinished) {
        return;
    }
    abandon();
    Q_EMIT finished(m_output, error, details);
}

QString ScriptProcess::reasonOfFailedStart() const
{
    const QString program = m_process.program();
    const bool isPath = program.contains(u'/');
    const QFileInfo file(isPath ? program : QStandardPaths::findExecutable(program));
    if (!file.isFile()) {
        return tr("There is no such program.");
    }
    return file.isExecutable() ? m_process.errorString() : tr("The file is not executable.");
}

QString ScriptProcess::lastErrorLine() const
{
    return QString::fromLocal8Bit(m_errors.trimmed()).section(u'\n', -1);
}
