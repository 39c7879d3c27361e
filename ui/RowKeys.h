// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

class CommandLineEdit;
class CommandQuery;
class PluginManager;
class QKeyEvent;
class ResultList;

/// The keys that act on the rows, from the box and from the list:
///
/// - Page Up, Page Down, Ctrl+Home and Ctrl+End move the current row, from the box;
/// - Alt+1 to Alt+9 start the first nine visible rows, which show their digits while Alt is held;
/// - Ctrl+C copies the path or the value of the row, unless text is selected in the box;
/// - Ctrl+D pins or unpins the row;
/// - Ctrl+Enter carries out the action of the arguments if the command has one, and otherwise shows
///   the file of the row in its folder;
/// - Tab writes the completion of a row into the box, or its folder if the command lists folders;
///   Alt+Up then writes the parent of the listed one;
/// - text that is typed into the list, except a blank, and Backspace go to the box.
///
/// It is an event filter and not a set of shortcuts, so that keys that mean nothing for the current
/// row keep their effect in the box.
class RowKeys : public QObject
{
    Q_OBJECT

public:
    /// The list becomes the parent. The others are not owned and must live as long as the window.
    /// The query is the one whose records the list shows.
    RowKeys(CommandLineEdit *box, ResultList *list, PluginManager *pluginManager,
            const CommandQuery *lastQuery);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The current row is to be started.
    void launchRequested();

    /// An action has taken the arguments out of the box. A pending search is void.
    void argumentsTaken();

private:
    bool pressKey(QObject *watched, const QKeyEvent &key);
    bool pressInBox(const QKeyEvent &key);
    bool pressInList(const QKeyEvent &key);
    bool pressWithControl(const QKeyEvent &key);
    bool launchVisibleRow(int number);
    bool copyRow();
    bool togglePin();
    bool showRowInFolder();
    bool executeArguments();
    bool completeArguments();
    bool enterFolder();
    bool enterParentFolder();
    bool canListFolder(const QVariantMap &action) const;
    void writeFolder(const QString &command, const QString &path);

    CommandLineEdit *m_box;
    ResultList *m_list;
    PluginManager *m_pluginManager;
    const CommandQuery *m_lastQuery;
};
