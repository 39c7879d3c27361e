// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>

/// Replaces the desktop as the handler of file URLs and records them.
class OpenedFiles : public QObject
{
    Q_OBJECT

public:
    OpenedFiles() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~OpenedFiles() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QStringList paths;

public Q_SLOTS:
    void open(const QUrl &url) { paths.append(url.toLocalFile()); }
};
