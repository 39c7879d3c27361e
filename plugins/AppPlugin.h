// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"

class AppLauncher;

/// The command "app": the program search.
class AppPlugin : public IPlugin
{
    Q_OBJECT

public:
    /// The launcher is not owned; if it is null, the plugin finds and launches nothing.
    explicit AppPlugin(AppLauncher *launcher, QObject *parent = nullptr);

    QString command() const override;
    QString description() const override;

    /// The records of AppLauncher::search(), each with a "launch" action for its path.
    QVariantList query(const QString &args) override;

    QStringList searchTexts(const QString &args) const override { return {args}; }

    /// Launches "data" for any "type". False if "data" is empty or cannot be launched.
    bool execute(const QVariantMap &action) override;

private:
    AppLauncher *m_launcher;
};
