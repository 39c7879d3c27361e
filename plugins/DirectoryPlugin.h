// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"

/// The command "cd": lists the folder that the arguments name.
class DirectoryPlugin : public IPlugin
{
    Q_OBJECT

public:
    explicit DirectoryPlugin(QObject *parent = nullptr);

    QString command() const override;
    QString description() const override;

    /// Returns a record that opens the folder, then one for each entry that is not hidden: folders
    /// first, each group sorted by name. Lists the home folder if the arguments are blank or name
    /// nothing that exists; returns one record with an error if they name a file. Draws the missing
    /// icons.
    QVariantList query(const QString &args) override;

    bool listsFolders() const override { return true; }

    /// Opens "data": a folder in the file manager for "openFolder" and "navigate", a file in its
    /// program for "openFile". False for any other "type", for an empty "data" and on failure.
    bool execute(const QVariantMap &action) override;

private:
    QString resolvePath(const QString &args) const;
};
