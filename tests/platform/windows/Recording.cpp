// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/Recording.h"

#include <QDir>
#include <QFile>

namespace recording {

QString program()
{
    return QDir::fromNativeSeparators(QStringLiteral(RECORDER));
}

QList<QStringList> starts(const QString &filePath)
{
    QFile file(filePath);
    QList<QStringList> starts;
    if (!file.open(QIODevice::ReadOnly)) {
        return starts;
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        starts.append(line.split(u'\t'));
    }
    return starts;
}

} // namespace recording
