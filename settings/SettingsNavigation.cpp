// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsNavigation.h"

#include "platform/QtVersion.h"
#include "widgets/ItemFocusDelegate.h"

#include <QShowEvent>

using namespace Qt::StringLiterals;

SettingsNavigation::SettingsNavigation(QWidget *parent)
    : QListWidget(parent)
{
    setObjectName(u"settingsNavigation"_s);
    setFixedWidth(132);
    setItemDelegate(new ItemFocusDelegate(this));
}

// Tells a screen reader the current page: a command opens a page while the focus stays in the box.
// Readers ignore a hidden list.
void SettingsNavigation::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QListWidget::currentChanged(current, previous);
    if (current.isValid() && isVisible()) {
        qtversion::sayCurrentChild(this, current.row());
    }
}

void SettingsNavigation::showEvent(QShowEvent *event)
{
    QListWidget::showEvent(event);
    if (!event->spontaneous() && currentRow() >= 0) {
        qtversion::sayCurrentChild(this, currentRow());
    }
}
