// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"
#include "launcher/IconCache.h"

#include <QStringList>

#include <optional>

class RowsChanged;

/// The command "file": searches all files by name, with the file index of the system.
class FilePlugin : public IPlugin
{
    Q_OBJECT

public:
    explicit FilePlugin(QObject *parent = nullptr);

    /// Also reports when an index that a query found incomplete is complete. The object is not
    /// owned and must live as long as the event loop runs.
    FilePlugin(RowsChanged *rowsChanged, QObject *parent);

    QString command() const override;
    QString description() const override;

    /// Returns a record for each of the first 50 files and folders found, in the order of the
    /// index. Returns one inert record for blank arguments, without an index, if the search failed,
    /// or if it found nothing. Waits for the answer of the index, and draws the missing icons.
    QVariantList query(const QString &args) override;

    QStringList searchTexts(const QString &args) const override;

    /// Opens "data" in its program. False if it is empty, cannot be opened, or "type" is not
    /// "openFile".
    bool execute(const QVariantMap &action) override;

private:
    QVariantList search(const QString &args);
    QVariantList makeRecords(const QStringList &paths);
    QVariantMap inertRecord(const QString &title, const QString &subtitle) const;
    QString fileIcon(const QString &path);

    QString m_cacheDir;               // empty if it cannot be created
    std::optional<IconCache> m_icons; // for the records of the last query
};
