// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QListWidgetItem>
#include <QVariantMap>

/// A row of the result list. Its text is title, line feed and subtitle of a result record, its icon
/// the record's; both are made when they are asked for, so that a row that never comes into sight
/// costs neither. The record itself stands under Qt::UserRole.
class ResultItem : public QListWidgetItem
{
public:
    explicit ResultItem(const QVariantMap &record);

    QVariant data(int role) const override;

private:
    QVariant decoration() const;

    const QVariantMap m_record;
    mutable QIcon m_icon;
};
