// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

class CommandLineEdit;
class CommandQuery;
class PluginManager;
class ResultList;
class WindowHeight;

/// Repeats the last query when the rows of its command have changed, and keeps the current row.
/// Does nothing if the text of the box has changed since: its own search is then pending.
class RowUpdate : public QObject
{
    Q_OBJECT

public:
    /// The height becomes the parent. The others are not owned and must live as long as its window.
    RowUpdate(PluginManager *pluginManager, const CommandQuery *lastQuery,
              const CommandLineEdit *box, ResultList *list, WindowHeight *height);

private:
    void update(const QString &command);

    PluginManager *m_pluginManager;
    const CommandQuery *m_lastQuery;
    const CommandLineEdit *m_box;
    ResultList *m_list;
    WindowHeight *m_height;
};
