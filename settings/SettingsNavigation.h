// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListWidget>

/// The list of the pages beside the settings.
class SettingsNavigation : public QListWidget
{
public:
    explicit SettingsNavigation(QWidget *parent = nullptr);

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void showEvent(QShowEvent *event) override;
};
