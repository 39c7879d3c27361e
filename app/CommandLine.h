// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/InstanceRequest.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// The options of the program. Those of Qt, such as -platform, are left to Qt.
struct CommandLine
{
    enum class Error {
        None,
        UnknownOption,
        UnexpectedArgument,
        MissingText, ///< after --query
        TooLong,     ///< a text beyond InstanceRequest::maximumSize
        TwoRequests,
    };

    Error error = Error::None;
    QString culprit;         ///< the argument with the error
    bool wantsCheck = false; ///< of a command's folder, which follows
    bool wantsHelp = false;
    bool wantsVersion = false;
    std::optional<InstanceRequest> request;
    QList<int> ownArguments; ///< the indices of those that Qt must not see

    /// Takes the arguments of main(), the first of which is the program. Stops at the first error.
    /// If the first after the program is --check-command, the others are left to commandcheck.
    static CommandLine parse(int argc, const char *const argv[]);
    static CommandLine parse(const QStringList &arguments);

private:
    static bool skipQtOption(const QStringList &arguments, int &index);
    void parseOwnOption(const QStringList &arguments, int &index);
    void parseRequest(const QStringList &arguments, int &index);
    void fail(Error reason, const QString &argument);
};
