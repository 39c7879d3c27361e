// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "commands/CommandFile.h"
#include "platform/ProcessTree.h"

#include <QByteArray>
#include <QObject>
#include <QProcess>
#include <QTimer>

/// One run of the program of a command. It gets an empty standard input and the folder of the
/// command as its working directory. What it has started ends with it.
class ScriptProcess : public QObject
{
    Q_OBJECT

public:
    /// More output than this is an error.
    static constexpr qint64 maximumOutput = 1024 * 1024;

    explicit ScriptProcess(const CommandFile &file, QObject *parent = nullptr);
    ~ScriptProcess() override;

    /// Starts the program with the text in the place of "{query}", and returns at once.
    void start(const QString &query);

    /// Ends the program. No signal follows, and the object deletes itself.
    void abandon();

Q_SIGNALS:
    /// The program has ended, once for each start. The error and its details are for the user, and
    /// empty if the output is complete.
    void finished(const QByteArray &output, const QString &error, const QString &details);

private:
    void readOutput();
    void readErrors();
    void handleError(QProcess::ProcessError error);
    void handleEnd(int exitCode, QProcess::ExitStatus status);
    void finish(const QString &error, const QString &details = QString());
    QString reasonOfFailedStart() const;
    QString lastErrorLine() const;

    CommandFile m_file;
    platform::ProcessTree m_tree;
    QProcess m_process; // ends before the tree
    QTimer m_timeout;
    QByteArray m_output;
    QByteArray m_errors; // the last bytes of the standard error
    bool m_isFinished = false;
};
