// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"

/// The command "cd": a look into the folder that the arguments name.
class DirectoryPlugin : public IPlugin
{
    Q_OBJECT

public:
    explicit DirectoryPlugin(QObject *parent = nullptr);

    QString command() const override;
    QString description() const override;

    /// A row that opens the folder, then one for each entry that is not hidden, folders first, each
    /// group by name. For arguments that name nothing the home folder; for those that name a file
    /// one row that says so. Renders the icons that it has not rendered before.
    QVariantList query(const QString &args) override;

    /// Opens "data": a folder in the file manager for "openFolder" and "navigate", a file in its
    /// program for "openFile". False for any other "type" and for an empty "data".
    bool execute(const QVariantMap &action) override;

private:
    QString resolvePath(const QString &args) const;
};
