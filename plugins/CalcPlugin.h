// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"

/// The command "calc": one row with the value of the expression, which it copies when chosen.
class CalcPlugin : public IPlugin
{
    Q_OBJECT

public:
    explicit CalcPlugin(QObject *parent = nullptr);

    QString command() const override;
    QString description() const override;

    /// Always one record: a hint for blank arguments, the error, or the value to 15 digits.
    QVariantList query(const QString &args) override;

    /// Puts "data" on the clipboard when "type" is "copy"; false when there is nothing to copy.
    bool execute(const QVariantMap &action) override;
};
