// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ResultItem.h"

#include "core/ResultRecord.h"
#include "platform/ImageFile.h"
#include "ui/VisibleText.h"

ResultItem::ResultItem(const QVariantMap &record)
    : QListWidgetItem(nullptr, UserType)
    , m_record(record)
{
}

QVariant ResultItem::data(int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return QString(recordTitle(m_record) + u'\n' + recordSubtitle(m_record));
    case Qt::AccessibleTextRole:
        return accessibleText();
    case Qt::DecorationRole:
        return decoration();
    case recordRole:
        return m_record;
    default:
        return QListWidgetItem::data(role);
    }
}

QVariant ResultItem::accessibleText() const
{
    const QString text =
        visibleText(recordTitle(m_record)) + u'\n' + visibleText(recordSubtitle(m_record));
    return text == this->text() ? QListWidgetItem::data(Qt::AccessibleTextRole) : text;
}

QVariant ResultItem::decoration() const
{
    const QString path = recordIcon(m_record);
    if (path.isEmpty()) {
        return {};
    }
    if (m_icon.isNull()) {
        m_icon = platform::iconOfImageFile(path);
    }
    return m_icon;
}

QVariantMap recordOf(const QListWidgetItem &item)
{
    return item.data(ResultItem::recordRole).toMap();
}

QVariantMap recordOf(const QModelIndex &index)
{
    return index.data(ResultItem::recordRole).toMap();
}
