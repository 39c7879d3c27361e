// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListWidget>
#include <QVariantList>
#include <QVariantMap>

class AppLauncher;
class ResultDelegate;

/// The list of results: one row per record, with one row selected. The context menu of a row with a
/// path pins or unpins the path.
class ResultList : public QListWidget
{
    Q_OBJECT

public:
    /// The launcher is not owned and must outlive the list.
    explicit ResultList(AppLauncher *launcher, QWidget *parent = nullptr);

    /// Replaces the rows with these records and selects the first. The rows of programs and files
    /// emphasise the characters by which the search texts found them.
    void showResults(const QVariantList &results, const QStringList &searchTexts);

    /// Shows the digits 1 to 9 at the first nine visible rows, or hides them. They follow the rows
    /// when the list scrolls.
    void setDigitsVisible(bool visible);
    bool areDigitsVisible() const { return m_areDigitsVisible; }

    /// The row that is or would be shown with the digit 1: the first of which at least a half is
    /// visible. -1 without rows.
    int firstVisibleRow() const;

    /// Replaces the rows with later records for the same query, and so with the same search texts.
    /// The current row stays current if it is still there, and the list does not scroll.
    void updateRecords(const QVariantList &records);

    /// Moves the selection by this number of rows, and stops at the first and the last row.
    void moveSelection(int delta);

    /// The number of rows that fit into the list; at least 1.
    int rowsPerPage() const;

    /// Pins the path of the record, or unpins it. Does nothing without a path.
    void togglePin(const QVariantMap &record);

    /// The record of the selected row; empty if there are no rows.
    QVariantMap currentRecord() const;

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    void showResults(const QVariantList &results);
    void addRows(const QVariantList &records);
    void openMenu(const QPoint &position);
    void updateDigits();

    AppLauncher *m_launcher;
    ResultDelegate *m_delegate;
    bool m_areDigitsVisible = false;
};
