// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListWidget>
#include <QVariantList>
#include <QVariantMap>

class AppLauncher;

/// The list of result records: a row for each, one of which is selected. The menu of a row with a
/// path pins the path, or unpins it.
class ResultList : public QListWidget
{
    Q_OBJECT

public:
    /// The launcher is not owned and must outlive the list.
    explicit ResultList(AppLauncher *launcher, QWidget *parent = nullptr);

    /// Replaces the rows and selects the first.
    void showResults(const QVariantList &results);

    /// Moves the selection by so many rows, to the first or the last at most.
    void moveSelection(int delta);

    /// The record of the selected row; empty without one.
    QVariantMap currentRecord() const;

private:
    void openMenu(const QPoint &position);

    AppLauncher *m_launcher;
};
