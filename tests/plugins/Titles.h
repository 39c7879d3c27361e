// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QVariant>

/// The titles of the records, in order.
inline QStringList titles(const QVariantList &records)
{
    QStringList texts;
    for (const QVariant &record : records) {
        texts.append(record.toMap().value(QStringLiteral("title")).toString());
    }
    return texts;
}
