// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"

/// The command "calc": one row with the value of the expression; Enter copies the value.
class CalcPlugin : public IPlugin
{
    Q_OBJECT

public:
    explicit CalcPlugin(QObject *parent = nullptr);

    QString command() const override;
    QString description() const override;

    /// Returns one record: a hint for blank arguments, the error, or the value to 15 digits.
    QVariantList query(const QString &args) override;

    /// Copies "data" to the clipboard. False if it is empty or "type" is not "copy".
    bool execute(const QVariantMap &action) override;
};
