// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "commands/CommandFile.h"
#include "core/IPlugin.h"

#include <QDeadlineTimer>
#include <QPointer>
#include <QTimer>

#include <optional>

class RowsChanged;
class ScriptProcess;

/// A command of the user's own: a program in a folder answers the queries.
class ScriptPlugin : public IPlugin
{
    Q_OBJECT

public:
    /// The object that is told when records have come is not owned and must outlive the plugin.
    ScriptPlugin(const CommandFile &file, RowsChanged *rowsChanged, QObject *parent = nullptr);
    ~ScriptPlugin() override;

    QString command() const override;

    /// The name, if the file has no description.
    QString description() const override;

    /// Starts the program, and ends that of an earlier text, unless it already runs for this one.
    /// Returns the records of the previous text for at most 300 ms, then an inert one that says
    /// that the program is asked. When the program has ended, the next query with the same text
    /// returns its records, unless it comes more than 2 s later; an inert one says what failed, or
    /// that there are none.
    QVariantList query(const QString &args) override;

    /// Copies, opens or runs with "data". False if that fails or the type is another one.
    bool execute(const QVariantMap &action) override;

private:
    void ask(const QString &text);
    void startProgram();
    void takeAnswer(const QByteArray &output, const QString &error, const QString &details);
    void dropOldRecords();
    bool isAsking() const;
    QVariantList records() const;
    QVariantList answerRecords(const QByteArray &output) const;
    bool run(const QString &argument) const;

    CommandFile m_file;
    RowsChanged *m_rowsChanged;
    std::optional<QString> m_text; // of the last query
    QVariantList m_records;        // of the last answer; empty if there is none, or it is too old
    QDeadlineTimer m_newUntil;     // until then the answer is new; no query has returned it yet
    QPointer<ScriptProcess> m_process;
    QTimer m_delay;
    QTimer m_oldRecords;
};
