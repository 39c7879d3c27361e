// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "commands/CommandFile.h"
#include "support/TestHome.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

/// Folders of commands in the home of the test.
namespace commandfolder {

/// A correct file with no optional key.
inline QJsonObject smallestFile(const QString &command)
{
    return {{QStringLiteral("command"), command},
            {QStringLiteral("name"), QStringLiteral("My command")},
            {QStringLiteral("exec"), QJsonArray{QStringLiteral("./program")}},
            {QStringLiteral("output"), QStringLiteral("items")}};
}

/// Writes the file into the folder, which is relative to the home, and returns the folder.
inline QString write(const QString &folder, const QJsonObject &file)
{
    testhome::writeFile(folder + QStringLiteral("/command.json"), QJsonDocument(file).toJson());
    return testhome::path() + u'/' + folder;
}

/// The user's folder with this name, relative to the home.
inline QString userFolder(const QString &name)
{
    return testhome::appDataPath().mid(testhome::path().size() + 1) + QStringLiteral("/commands/")
           + name;
}

/// A command whose `exec` is the list. Its folder is "script" in the home.
inline CommandFile command(const QStringList &exec)
{
    CommandFile file;
    // Also makes the folder.
    testhome::writeFile(QStringLiteral("script/command.json"), {});
    file.folder = testhome::path() + QStringLiteral("/script");
    file.command = QStringLiteral("mine");
    file.name = QStringLiteral("My command");
    file.exec = exec;
    file.output = CommandFile::Output::Lines;
    file.timeoutMs = 60'000;
    return file;
}

/// A command whose program is a shell script with these lines; its first argument is the query.
inline CommandFile script(const QByteArray &lines)
{
    const QString path =
        testhome::writeFile(QStringLiteral("script/program"), "#!/bin/sh\n" + lines);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return command({QStringLiteral("./program"), QStringLiteral("{query}")});
}

} // namespace commandfolder
