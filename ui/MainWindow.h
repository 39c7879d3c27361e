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
class ResultList;
class Settings;
class Updater;
class WindowHeight;

namespace QWK {
class WidgetWindowAgent;
}

/// The launcher's one window: the command box, the pinned applications, and below them the list of
/// results or a plugin's page. It takes the height of what it shows. Closing it hides it.
class MainWindow : public QWidget
{
    Q_OBJECT

public:
    /// The services are not owned and must outlive the window; all plugins must be registered. The
    /// one check for an update follows three seconds later.
    MainWindow(AppLauncher *launcher, PluginManager *pluginManager, Settings *settings,
               Updater *updater, QWidget *parent = nullptr);

public Q_SLOTS:
    /// Shows the page of a command's plugin in place of the list and leaves the box as it is.
    /// False, with nothing changed, when there is no such page.
    bool openPluginView(const QString &command);

    /// Brings the window up with the command in the box, its rows, and its page if it has one.
    void activateCommand(const QString &command);

    /// Shows the window where it was last, in front and with the focus in the box.
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
    QWidget *buildTitleBar(QWK::WidgetWindowAgent *agent);
    QWidget *buildContent();
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

    bool showsList() const;
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
    CommandQuery m_query;  // the text at the last search
    QString m_viewCommand; // by which the page on show was opened; empty for the list
};

/// Whether the window is visible and not minimised; QWidget::isVisible() includes minimised
/// windows.
inline bool isShowing(const QWidget &window)
{
    return window.isVisible() && !window.isMinimized();
}
