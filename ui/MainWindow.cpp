// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "core/ResultRecord.h"
#include "launcher/AppLauncher.h"
#include "platform/QtVersion.h"
#include "platform/WindowActivation.h"
#include "settings/Settings.h"
#include "settings/SettingsCommand.h"
#include "ui/CommandLineEdit.h"
#include "ui/PageScroller.h"
#include "ui/PinnedStrip.h"
#include "ui/ResultItem.h"
#include "ui/ResultList.h"
#include "ui/RowKeys.h"
#include "ui/RowUpdate.h"
#include "ui/ScreenArea.h"
#include "ui/TitleBar.h"
#include "ui/UpdatePrompt.h"
#include "ui/VisibleText.h"
#include "ui/WindowHeight.h"
#include "ui/WindowPlacement.h"
#include "update/Updater.h"
#include "widgets/AccessibleFactory.h"

#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <QWKWidgets/widgetwindowagent.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto searchDelay = 120ms;
constexpr auto focusLossDelay = 50ms;
constexpr auto updateCheckDelay = 3000ms;

} // namespace

MainWindow::MainWindow(AppLauncher *launcher, PluginManager *pluginManager, Settings *settings,
                       Updater *updater, QWidget *parent)
    : QWidget(parent)
    , m_launcher(launcher)
    , m_pluginManager(pluginManager)
    , m_settings(settings)
    , m_query(pluginManager, launcher, settings)
{
    buildWindow();
    connectSearch();
    connectList();
    createShortcuts();
    new UpdatePrompt(updater, this);
    m_pinnedStrip->rebuild();
    performSearch();
    QTimer::singleShot(updateCheckDelay, updater, &Updater::checkForUpdate);
}

void MainWindow::buildWindow()
{
    setAttribute(Qt::WA_DontCreateNativeAncestors);
    setWindowTitle(u"Vaskel"_s);
    // A screen reader does not take a plain QWidget for a window.
    installAccessible<MainWindow, QAccessibleWidget, QAccessible::Window>();
    resize(fullWindowSize);
    setMinimumWidth(720);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto *agent = new QWK::WidgetWindowAgent(this);
    agent->setup(this);
    layout->addWidget(buildTitleBar(this, agent));
    layout->addWidget(buildContent(), 1);
    new WindowPlacement(this, m_settings);
}

QWidget *MainWindow::buildContent()
{
    auto *content = new QWidget(this);
    content->setObjectName(u"windowContent"_s);
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(20, 8, 20, 20);
    layout->setSpacing(12);
    buildCommandEdit(layout);
    buildPinnedStrip(layout);
    buildPages(layout);
    return content;
}

void MainWindow::buildCommandEdit(QBoxLayout *layout)
{
    const QStringList commands = m_pluginManager->commands();
    m_commandEdit = new CommandLineEdit(layout->parentWidget());
    m_commandEdit->setCommands(QSet<QString>(commands.cbegin(), commands.cend()));
    m_commandEdit->lineEdit()->setPlaceholderText(tr("Search apps or type cmd space args..."));
    connect(m_commandEdit, &CommandLineEdit::managementRequested, this,
            [this] { openPluginView(settingscommand::user); });
    layout->addWidget(m_commandEdit);

    m_statusLabel = new QLabel(layout->parentWidget());
    m_statusLabel->setObjectName(u"muted"_s);
    m_statusLabel->setTextFormat(Qt::PlainText);
    // A long command must not widen the window.
    m_statusLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_statusLabel->hide();
    layout->addWidget(m_statusLabel);
}

void MainWindow::buildPinnedStrip(QBoxLayout *layout)
{
    m_pinnedStrip = new PinnedStrip(m_launcher, layout->parentWidget());
    connect(m_pinnedStrip, &PinnedStrip::aboutToChange, this,
            [this] { takeFocusFrom(m_pinnedStrip); });
    connect(m_pinnedStrip, &PinnedStrip::changed, this, &MainWindow::updatePinnedStrip);
    connect(m_pinnedStrip, &PinnedStrip::launched, this, &MainWindow::hide);
    layout->addWidget(m_pinnedStrip);
}

void MainWindow::buildPages(QBoxLayout *layout)
{
    m_stack = new QStackedWidget(layout->parentWidget());
    m_stack->setObjectName(u"windowPages"_s);
    m_resultList = new ResultList(m_launcher, m_stack);
    m_stack->addWidget(m_resultList);
    layout->addWidget(m_stack, 1);
    layout->addStretch(); // takes the space that the rows leave

    m_height = new WindowHeight(this, m_stack, m_resultList);
    connect(m_height, &WindowHeight::listHidden, this, [this] { takeFocusFrom(m_resultList); });
    new RowUpdate(m_pluginManager, &m_query, m_commandEdit, m_resultList, m_height);
}

void MainWindow::connectSearch()
{
    m_searchTimer = new QTimer(this);
    m_searchTimer->setObjectName(u"searchTimer"_s);
    m_searchTimer->setInterval(searchDelay);
    m_searchTimer->setTimerType(Qt::PreciseTimer); // others may be 6 ms early or late
    m_searchTimer->setSingleShot(true);

    const CommandLineEdit *box = m_commandEdit;
    connect(box, &CommandLineEdit::textChanged, m_searchTimer, qOverload<>(&QTimer::start));
    connect(m_searchTimer, &QTimer::timeout, this, &MainWindow::performSearch);
    connect(box->lineEdit(), &QLineEdit::returnPressed, this, &MainWindow::launchCurrent);
    connect(m_settings, &Settings::showAllAppsWhenSearchEmptyChanged, this,
            &MainWindow::performSearch);
}

void MainWindow::connectList()
{
    connect(m_resultList, &QListWidget::itemClicked, this, &MainWindow::clickRow);
    connect(m_resultList, &QListWidget::itemDoubleClicked, this, &MainWindow::doubleClickRow);
    auto *keys = new RowKeys(m_commandEdit, m_resultList, m_pluginManager, &m_query);
    connect(keys, &RowKeys::launchRequested, this, &MainWindow::launchCurrent);
    connect(keys, &RowKeys::argumentsTaken, m_searchTimer, &QTimer::stop);
}

void MainWindow::createShortcuts()
{
    const auto addShortcut = [this](const QKeySequence &key, const auto &effect) {
        auto *shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WindowShortcut);
        connect(shortcut, &QShortcut::activated, this, effect);
        return shortcut;
    };
    const auto addListShortcut = [&](const QKeySequence &key, int delta) {
        auto *shortcut = addShortcut(key, [this, delta] { moveSelection(delta); });
        // An enabled shortcut would take its key from the page, even if it did nothing.
        connect(m_stack, &QStackedWidget::currentChanged, shortcut,
                [this, shortcut] { shortcut->setEnabled(isListCurrent()); });
    };
    addListShortcut(Qt::Key_Down, +1);
    addListShortcut(Qt::Key_Up, -1);
    addListShortcut(QKeySequence(u"Ctrl+N"_s), +1);
    addListShortcut(QKeySequence(u"Ctrl+P"_s), -1);
    addShortcut(Qt::Key_Escape, [this] { hide(); });
}

void MainWindow::showAndActivate()
{
    platform::prepareActivation(this);
    setWindowState(windowState() & ~Qt::WindowMinimized); // show() would keep it
    show();
    raise();
    activateWindow();
    // For 100 ms after it is hidden, the window remains QGuiApplication::focusWindow(), so
    // QApplication does not notice that it becomes active: keys arrive, but shortcuts do not work.
    if (!QApplication::activeWindow() && QGuiApplication::focusWindow() == windowHandle()) {
        qtversion::setActiveWindow(this);
    }
    m_commandEdit->setFocus(Qt::OtherFocusReason);
}

void MainWindow::showQuery(const QString &text)
{
    showAndActivate();
    m_commandEdit->setText(text);
}

void MainWindow::activateCommand(const QString &command)
{
    showQuery(command + u' ');
    performSearch();

    const IPlugin *plugin = m_pluginManager->pluginForCommand(command);
    if (plugin && plugin->hasView()) {
        openPluginView(command);
    }
}

bool MainWindow::event(QEvent *event)
{
    if (event->type() == QEvent::WindowDeactivate && m_settings->autoHideOnFocusLoss()) {
        // The focus may return at once, for example after it passed through another window.
        QTimer::singleShot(focusLossDelay, this, [this] {
            if (!isActiveWindow() && m_settings->autoHideOnFocusLoss()) {
                hide();
            }
        });
    }
    return QWidget::event(event);
}

// Fitting the window hides the list for a moment. Qt would then move its focus to the next widget,
// the close button, and leave it there.
bool MainWindow::focusNextPrevChild(bool next)
{
    return (m_resultList->isVisible() || !m_resultList->hasFocus())
           && QWidget::focusNextPrevChild(next);
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_height) { // null while the window is built
        m_height->handleResize(*event);
    }
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->ignore();
    hide();
}

void MainWindow::performSearch()
{
    m_query.setText(m_commandEdit->commandText());
    if (isListCurrent() && m_query.opensAtOnce()) {
        launchCurrent();
        return;
    }

    m_resultList->showResults(m_query.records(), m_query.searchTexts());
    updateStatus();
    // A page stays only while the box contains the command that opened it.
    if (isListCurrent() || !m_query.isCommand() || m_query.command() != m_viewCommand) {
        closePluginView();
    }
    updatePinnedStripVisibility();
}

void MainWindow::updateStatus()
{
    if (m_query.isCommand()) {
        m_statusLabel->setText(visibleText(m_query.statusText()));
    }
    m_statusLabel->setVisible(m_query.isCommand());
}

void MainWindow::launchCurrent()
{
    if (m_query.isCommand() && openPluginView(m_query.command())) {
        return;
    }
    const QVariantMap record = m_resultList->currentRecord();
    const QVariantMap action = recordAction(record);
    const QString path = recordPath(record);
    if (!action.isEmpty()) {
        m_pluginManager->executeAction(action);
        hide();
    } else if (!path.isEmpty()) {
        m_launcher->launch(path);
        hide();
    }
}

void MainWindow::moveSelection(int delta)
{
    if (isListCurrent()) {
        m_resultList->moveSelection(delta);
    }
}

void MainWindow::clickRow(const QListWidgetItem *item)
{
    if (m_settings->appLaunchRequiresDoubleClick() || m_query.isCommand()) {
        return;
    }
    if (!recordPath(recordOf(*item)).isEmpty()) {
        launchCurrent();
    }
}

void MainWindow::doubleClickRow()
{
    if (m_settings->appLaunchRequiresDoubleClick() || m_query.isCommand()) {
        launchCurrent();
    }
}

bool MainWindow::openPluginView(const QString &command)
{
    const IPlugin *plugin = m_pluginManager->pluginForCommand(command);
    QWidget *page = m_pluginManager->viewForCommand(command);
    if (!page) {
        return false;
    }
    if (plugin) {
        connect(plugin, &IPlugin::viewCloseRequested, this, &MainWindow::closePluginView,
                Qt::UniqueConnection);
    }
    showScrollable(m_stack, page);
    m_height->makeRoomForPage();
    m_viewCommand = command;
    return true;
}

void MainWindow::closePluginView()
{
    if (!isListCurrent()) {
        takeFocusFrom(m_stack);
    }
    m_stack->setCurrentWidget(m_resultList);
    m_height->hideList();
    m_viewCommand.clear();
}

void MainWindow::updatePinnedStrip()
{
    // The new buttons are last in the tab order, but they are above the list.
    const auto buttons = m_pinnedStrip->findChildren<QPushButton *>();
    if (!buttons.isEmpty()) {
        setTabOrder(buttons.last(), m_resultList);
    }
    updatePinnedStripVisibility();
    m_height->scheduleUpdate();
}

void MainWindow::updatePinnedStripVisibility()
{
    m_pinnedStrip->setVisible(!m_pinnedStrip->isEmpty() && m_commandEdit->text().isEmpty()
                              && !m_query.isCommand() && m_viewCommand.isEmpty());
}

bool MainWindow::isListCurrent() const
{
    return m_stack->currentWidget() == m_resultList;
}

// Gives the focus to the box if the widget has it. Call before Qt does: it moves the focus of a
// hidden page or strip to the close button, and clears that of a deleted widget.
void MainWindow::takeFocusFrom(const QWidget *widget)
{
    if (widget->isAncestorOf(focusWidget())) {
        m_commandEdit->setFocus(Qt::OtherFocusReason);
    }
}
