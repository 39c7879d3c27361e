// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/ScriptPlugin.h"

#include "commands/ScriptAnswer.h"
#include "commands/ScriptProcess.h"
#include "core/ResultRecord.h"
#include "core/RowsChanged.h"
#include "platform/File.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QProcess>
#include <QUrl>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// How long the previous rows stay while the program runs. Without them, the list would flicker at
// each letter.
constexpr auto oldRecordsTime = 300ms;

// The window queries again as soon as the answer is there. If the user has left the command, no
// query follows, and a later visit must start the program anew.
constexpr auto newRecordsTime = 2s;

} // namespace

ScriptPlugin::ScriptPlugin(const CommandFile &file, RowsChanged *rowsChanged, QObject *parent)
    : IPlugin(parent)
    , m_file(file)
    , m_rowsChanged(rowsChanged)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(file.delayMs);
    connect(&m_delay, &QTimer::timeout, this, &ScriptPlugin::startProgram);
    m_oldRecords.setSingleShot(true);
    m_oldRecords.setInterval(oldRecordsTime);
    connect(&m_oldRecords, &QTimer::timeout, this, &ScriptPlugin::dropOldRecords);
}

ScriptPlugin::~ScriptPlugin() = default;

QString ScriptPlugin::command() const
{
    return m_file.command;
}

QString ScriptPlugin::description() const
{
    return m_file.description.isEmpty() ? m_file.name : m_file.description;
}

QVariantList ScriptPlugin::query(const QString &args)
{
    const QString text = args.trimmed();
    const bool isSameText = m_text == text;
    const bool isAnswered = !std::exchange(m_newUntil, QDeadlineTimer()).hasExpired();
    if (!isSameText || !(isAnswered || isAsking())) {
        ask(text);
    }
    return records();
}

bool ScriptPlugin::execute(const QVariantMap &action)
{
    const QString type = actionType(action);
    const QString data = actionData(action);
    if (type == ScriptAnswer::runType) {
        return run(data);
    }
    if (data.isEmpty()) {
        return false;
    }
    if (type == actiontype::copy) {
        QGuiApplication::clipboard()->setText(data);
        return true;
    }
    if (type == actiontype::openFile) {
        return platform::openFile(data);
    }
    return type == actiontype::openUrl && QDesktopServices::openUrl(QUrl(data));
}

void ScriptPlugin::ask(const QString &text)
{
    if (m_process) {
        m_process->abandon();
        m_process = nullptr;
    }
    m_text = text;
    // The time counts from the first text without an answer, however fast the user types.
    if (!m_records.isEmpty() && !m_oldRecords.isActive()) {
        m_oldRecords.start();
    }
    if (m_file.delayMs > 0) {
        m_delay.start();
    } else {
        startProgram();
    }
}

void ScriptPlugin::startProgram()
{
    m_process = new ScriptProcess(m_file, this);
    connect(m_process, &ScriptProcess::finished, this, &ScriptPlugin::takeAnswer);
    m_process->start(*m_text);
}

void ScriptPlugin::takeAnswer(const QByteArray &output, const QString &error,
                              const QString &details)
{
    m_process = nullptr; // deletes itself
    m_oldRecords.stop();
    m_records = error.isEmpty() ? answerRecords(output)
                                : QVariantList{makeInertRecord(error, details, m_file.command)};
    m_newUntil.setRemainingTime(newRecordsTime);
    m_rowsChanged->report(m_file.command);
}

void ScriptPlugin::dropOldRecords()
{
    m_records.clear();
    m_rowsChanged->report(m_file.command);
}

bool ScriptPlugin::isAsking() const
{
    return m_process || m_delay.isActive();
}

QVariantList ScriptPlugin::records() const
{
    if (!m_records.isEmpty()) {
        return m_records;
    }
    return {makeInertRecord(tr("Waiting for %1...").arg(m_file.name), m_file.description,
                            m_file.command)};
}

QVariantList ScriptPlugin::answerRecords(const QByteArray &output) const
{
    const ScriptAnswer answer = ScriptAnswer::parse(output, m_file);
    if (!answer.error.isEmpty()) {
        return {makeInertRecord(answer.error, m_file.name, m_file.command)};
    }
    if (answer.records.isEmpty()) { // without a record, the window would offer a web search
        return {makeInertRecord(tr("No results"), m_file.name, m_file.command)};
    }
    return answer.records;
}

bool ScriptPlugin::run(const QString &argument) const
{
    if (m_file.run.isEmpty()) {
        return false;
    }
    QStringList arguments = m_file.run;
    QProcess process;
    process.setProgram(m_file.programPath(arguments.takeFirst()));
    process.setArguments(arguments.replaceInStrings(u"{arg}"_s, argument));
    process.setWorkingDirectory(m_file.folder);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}
