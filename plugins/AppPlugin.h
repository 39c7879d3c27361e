// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"

class AppLauncher;

/// The command "app": the application search, as a plugin like any other.
class AppPlugin : public IPlugin
{
    Q_OBJECT

public:
    /// The launcher is not owned; without one the plugin finds and launches nothing.
    explicit AppPlugin(AppLauncher *launcher, QObject *parent = nullptr);

    QString command() const override;
    QString description() const override;

    /// The records of AppLauncher::search(), each with a "launch" action for its path.
    QVariantList query(const QString &args) override;

    /// Launches "data", whatever the "type"; false when it is empty or did not start.
    bool execute(const QVariantMap &action) override;

private:
    AppLauncher *m_launcher;
};
