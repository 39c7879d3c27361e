// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "commands/CommandFile.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <QVariantList>

class QJsonObject;

/// What a program has printed, as records of core/ResultRecord.h.
class ScriptAnswer
{
    Q_DECLARE_TR_FUNCTIONS(ScriptAnswer)

public:
    /// The maximum number of rows; further ones are ignored.
    static constexpr qsizetype maximumRows = 200;

    /// The type of the action that runs the program of "run" in the command's file.
    static const QString runType;

    /// Reads the output as the file says. Without rows or with an error, there are no records.
    static ScriptAnswer parse(const QByteArray &output, const CommandFile &file);

    QVariantList records;
    QString error; ///< for the user; empty without an error

private:
    void readItems(const QByteArray &output, const CommandFile &file);
    void readItem(const QJsonObject &item, const CommandFile &file);
    void readLines(const QString &text, const CommandFile &file);
    void readLine(const QString &line, const CommandFile &file);
    const QString &iconFor(const QString &path, const CommandFile &file);

    QString m_iconPath; // of the last row that had one
    QString m_icon;
};
