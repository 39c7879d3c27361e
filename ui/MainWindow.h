// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/CommandQuery.h"

#include <QString>
#include <QWidget>

class AppLauncher;
class CommandLineEdit;
class PinnedStrip;
class PluginManager;
class QBoxLayout;
class QLabel;
class QListWidgetItem;
class QStackedWidget;
class QTimer;
class ResultList;
class Settings;
class Updater;
class WindowHeight;

/// The window of the program: the command box, the pinned programs, and below them the list of
/// results or a plugin's page. Its height follows its content. Closing it hides it.
class MainWindow : public QWidget
{
    Q_OBJECT

public:
    /// The services are not owned and must outlive the window. All plugins must be registered.
    /// Three seconds later the window checks for an update, once.
    MainWindow(AppLauncher *launcher, PluginManager *pluginManager, Settings *settings,
               Updater *updater, QWidget *parent = nullptr);

public Q_SLOTS:
    /// Shows the page of a command's plugin instead of the list; the text of the box stays. Returns
    /// false, and changes nothing, if there is no such page.
    bool openPluginView(const QString &command);

    /// Shows the window with the text in the box; the search follows after its usual delay.
    void showQuery(const QString &text);

    /// Shows the window with the command in the box and its rows, or its page if the plugin has
    /// one.
    void activateCommand(const QString &command);

    /// Shows the window at its last position, raises it and focuses the box.
    void showAndActivate();

protected:
    bool event(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private Q_SLOTS:
    void performSearch();
    void launchCurrent();
    void moveSelection(int delta);

private:
    void buildWindow();
    QWidget *buildContent();
    // These create their widgets as children of the layout's widget: Qt would polish a widget again
    // if its parent changed.
    void buildCommandEdit(QBoxLayout *layout);
    void buildPinnedStrip(QBoxLayout *layout);
    void buildPages(QBoxLayout *layout);
    void connectSearch();
    void connectList();
    void createShortcuts();

    void updateStatus();

    void clickRow(const QListWidgetItem *item);
    void doubleClickRow();

    void closePluginView();

    void updatePinnedStrip();
    void updatePinnedStripVisibility();

    bool isListCurrent() const;
    void takeFocusFrom(const QWidget *widget);

    AppLauncher *m_launcher = nullptr;
    PluginManager *m_pluginManager = nullptr;
    Settings *m_settings = nullptr;
    CommandLineEdit *m_commandEdit = nullptr;
    QLabel *m_statusLabel = nullptr;
    PinnedStrip *m_pinnedStrip = nullptr;
    ResultList *m_resultList = nullptr;
    QStackedWidget *m_stack = nullptr;
    WindowHeight *m_height = nullptr;
    QTimer *m_searchTimer = nullptr;
    CommandQuery m_query;  // of the last search
    QString m_viewCommand; // the command that opened the current page; empty for the list
};

/// Whether the window is visible and not minimised; QWidget::isVisible() includes minimised
/// windows.
inline bool isShowing(const QWidget &window)
{
    return window.isVisible() && !window.isMinimized();
}
