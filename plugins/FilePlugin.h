// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"

#include <QStringList>

/// The command "file": a search of all files by name, which the system's file index answers.
class FilePlugin : public IPlugin
{
    Q_OBJECT

public:
    explicit FilePlugin(QObject *parent = nullptr);

    QString command() const override;
    QString description() const override;

    /// A row for each of the first 50 hits, files and folders alike, in the index's order, or one
    /// inert row: a hint for blank arguments, why the search failed, or that nothing was found.
    /// Waits for the index, and renders the icons that it has not rendered before.
    QVariantList query(const QString &args) override;

    /// Opens "data" in its program when "type" is "openFile"; false otherwise.
    bool execute(const QVariantMap &action) override;

private:
    QVariantList search(const QString &args);
    QVariantList rows(const QStringList &paths);
    QVariantMap inertRow(const QString &title, const QString &subtitle) const;
    QString fileIcon(const QString &path) const;

    QString m_cacheDir; // empty where it cannot be made
};
