// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QStringList>
#include <QVariantList>

/// The stand-in for the desktop portal, tests/support/portal.py, on the session bus.
class PortalStandIn
{
public:
    PortalStandIn() = default;
    ~PortalStandIn() { end(); }
    Q_DISABLE_COPY_MOVE(PortalStandIn)

    /// Starts it with these parameters, and waits until it is on the bus. A portal that runs
    /// already loses its name.
    bool start(const QJsonObject &parameters = {});
    void end();

    /// Calls a method of its interface for tests.
    QVariantList control(const QString &method, const QVariantList &arguments = {}) const;

    /// What was called since the last time.
    QStringList calls() const;

private:
    QProcess m_process;
};
