// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QListWidgetItem>
#include <QVariantMap>

/// A row of the result list. Its text is the title, a line feed and the subtitle of the record; its
/// icon is the icon of the record. Both are made on request, so a row that never becomes visible
/// costs neither. If the text has characters that need visible marks, a screen reader gets it with
/// these marks.
class ResultItem : public QListWidgetItem
{
public:
    /// The role of the record, a QVariantMap, in the data of a row.
    static constexpr int recordRole = Qt::UserRole;

    explicit ResultItem(const QVariantMap &record);

    QVariant data(int role) const override;

private:
    QVariant accessibleText() const;
    QVariant decoration() const;

    const QVariantMap m_record;
    mutable QIcon m_icon;
};

/// The record of a row.
QVariantMap recordOf(const QListWidgetItem &item);
QVariantMap recordOf(const QModelIndex &index);
