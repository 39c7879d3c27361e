// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVariantMap>

class QString;

/// A second base of a plugin whose arguments are worth an action of their own, which the records of
/// IPlugin::query() do not have. The user asks for it with Ctrl+Enter.
class ArgumentsAction
{
public:
    virtual ~ArgumentsAction();

    /// Returns the action for the untrimmed text after the command, or an empty map if there is
    /// nothing to do. IPlugin::execute() carries it out.
    virtual QVariantMap actionForArguments(const QString &args) const = 0;

protected:
    ArgumentsAction() = default;
    Q_DISABLE_COPY_MOVE(ArgumentsAction)
};
