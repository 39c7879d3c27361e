// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "core/ResultRecord.h"
#include "launcher/AppLauncher.h"
#include "platform/QtVersion.h"
#include "settings/Settings.h"
#include "ui/CommandLineEdit.h"
#include "ui/CommandText.h"
#include "ui/ListHeight.h"
#include "ui/PlainMessage.h"
#include "ui/PngFile.h"
#include "ui/ResultDelegate.h"
#include "ui/ResultItem.h"
#include "ui/WebSearch.h"
#include "update/Updater.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <QWKWidgets/widgetwindowagent.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <limits>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int pageHeight = 460; // whatever the user has made of the list's
constexpr int minimumWindowWidth = 720;
constexpr qsizetype maximumRequests = 16; // more than any window system leaves unanswered
constexpr int maximumRoundingError = 2;   // of a height, between this program and the screen
constexpr auto searchDelay = 120ms;
constexpr auto focusLossDelay = 50ms;
constexpr auto updateCheckDelay = 3000ms;

// A plain widget is no window to a screen reader.
QAccessibleInterface *createInterface(const QString &, QObject *object)
{
    auto *window = qobject_cast<MainWindow *>(object);
    return window ? new QAccessibleWidget(window, QAccessible::Window) : nullptr;
}

} // namespace

MainWindow::MainWindow(AppLauncher *launcher, PluginManager *pluginManager, Settings *settings,
                       Updater *updater, QWidget *parent)
    : QWidget(parent)
    , m_launcher(launcher)
    , m_pluginManager(pluginManager)
    , m_settings(settings)
    , m_updater(updater)
{
    buildWindow();
    connectSearch();
    connectList();
    createShortcuts();
    connectServices();
    connectUpdater();
    rebuildPinnedStrip();
    performSearch();
    QTimer::singleShot(updateCheckDelay, m_updater, &Updater::checkForUpdate);
}

void MainWindow::buildWindow()
{
    setAttribute(Qt::WA_DontCreateNativeAncestors);
    setWindowTitle(u"Vaskel"_s);
    QAccessible::installFactory(createInterface); // at most once, however often it is called
    resize(760, 460);
    setMinimumWidth(minimumWindowWidth);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto *agent = new QWK::WidgetWindowAgent(this);
    agent->setup(this);
    layout->addWidget(buildTitleBar(agent));
    layout->addWidget(buildContent(), 1);
}

QWidget *MainWindow::buildTitleBar(QWK::WidgetWindowAgent *agent)
{
    auto *bar = new QWidget(this);
    bar->setObjectName(u"windowTitleBar"_s);
    bar->setFixedHeight(36);

    auto *title = new QLabel(u"Vaskel"_s, bar);
    title->setObjectName(u"windowTitle"_s);
    auto *closeButton = new QPushButton(u"×"_s, bar);
    closeButton->setObjectName(u"windowCloseButton"_s);
    closeButton->setFixedSize(32, 28);
    closeButton->setAccessibleName(QCoreApplication::translate("FloatIcon", "Hide main window"));

    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(14, 0, 6, 0);
    layout->addWidget(title);
    layout->addStretch();
    layout->addWidget(closeButton);

    agent->setTitleBar(bar);
    agent->setSystemButton(QWK::WindowAgentBase::Close, closeButton);
    agent->setHitTestVisible(closeButton, true);
    connect(closeButton, &QPushButton::clicked, this, &QWidget::close);
    return bar;
}

QWidget *MainWindow::buildContent()
{
    auto *content = new QWidget(this);
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
    const QStringList words = m_pluginManager->commands();
    m_commandEdit = new CommandLineEdit(this);
    m_commandEdit->setCommands(QSet<QString>(words.cbegin(), words.cend()));
    m_commandEdit->lineEdit()->setPlaceholderText(tr("Search apps or type cmd space args..."));
    connect(m_commandEdit, &CommandLineEdit::managementRequested, this,
            [this] { openPluginView(u"user"_s); });
    layout->addWidget(m_commandEdit);

    m_statusLabel = new QLabel(this);
    m_statusLabel->setObjectName(u"muted"_s);
    m_statusLabel->setTextFormat(Qt::PlainText);
    // A word of any length may be typed; it must not widen the window.
    m_statusLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_statusLabel->hide();
    layout->addWidget(m_statusLabel);
}

void MainWindow::buildPinnedStrip(QBoxLayout *layout)
{
    m_pinnedBar = new QWidget(this);
    m_pinnedLayout = new QHBoxLayout(m_pinnedBar);
    m_pinnedLayout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pinnedBar);
}

void MainWindow::buildPages(QBoxLayout *layout)
{
    m_stack = new QStackedWidget(this);
    m_resultList = new QListWidget(m_stack);
    m_resultList->setAccessibleName(windowTitle());
    m_resultList->verticalScrollBar()->setAccessibleName(windowTitle());
    m_resultList->setIconSize(QSize(40, 40));
    m_resultList->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_resultList->setUniformItemSizes(true);
    m_resultList->setItemDelegate(new ResultDelegate(m_resultList));
    m_stack->addWidget(m_resultList);

    // The spacing above the stack stays when the stack is hidden, so that the window without the
    // list and the list add up to the window with it.
    QSizePolicy policy = m_stack->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_stack->setSizePolicy(policy);
    layout->addWidget(m_stack, 1);
    layout->addStretch(); // what the user's resizing leaves over goes below the rows
}

void MainWindow::connectSearch()
{
    auto *timer = new QTimer(this);
    timer->setInterval(searchDelay);
    timer->setSingleShot(true);

    const QLineEdit *edit = m_commandEdit->lineEdit();
    connect(edit, &QLineEdit::textChanged, timer, qOverload<>(&QTimer::start));
    connect(timer, &QTimer::timeout, this, &MainWindow::performSearch);
    connect(edit, &QLineEdit::returnPressed, this, &MainWindow::launchCurrent);
}

void MainWindow::connectList()
{
    m_resultList->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_resultList, &QListWidget::itemClicked, this, &MainWindow::clickRow);
    connect(m_resultList, &QListWidget::itemDoubleClicked, this, &MainWindow::doubleClickRow);
    connect(m_resultList, &QListWidget::customContextMenuRequested, this, &MainWindow::openRowMenu);
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
        // A shortcut takes its key away from the page on show, even when it then does nothing.
        connect(m_stack, &QStackedWidget::currentChanged, shortcut,
                [this, shortcut] { shortcut->setEnabled(showsList()); });
    };
    addListShortcut(Qt::Key_Down, +1);
    addListShortcut(Qt::Key_Up, -1);
    addListShortcut(QKeySequence(u"Ctrl+N"_s), +1);
    addListShortcut(QKeySequence(u"Ctrl+P"_s), -1);
    addShortcut(Qt::Key_Escape, [this] { hide(); });
}

void MainWindow::connectServices()
{
    connect(m_launcher, &AppLauncher::pinsChanged, this, &MainWindow::rebuildPinnedStrip);
    connect(m_settings, &Settings::showAllAppsWhenSearchEmptyChanged, this,
            &MainWindow::performSearch);
}

// A check that finds nothing or fails is silent.
void MainWindow::connectUpdater()
{
    connect(m_updater, &Updater::updateAvailable, this, &MainWindow::offerUpdate);
    connect(m_updater, &Updater::downloadProgress, this, &MainWindow::showDownloadProgress);
    connect(m_updater, &Updater::downloadFinished, this, &MainWindow::closeProgressDialog);
    connect(m_updater, &Updater::downloadError, this, [this](const QString &message) {
        closeProgressDialog();
        showPlainMessage(this, QMessageBox::Warning, tr("Update failed"), message, QMessageBox::Ok);
    });
}

void MainWindow::showAndActivate()
{
    setWindowState(windowState() & ~Qt::WindowMinimized); // which show() would leave
    show();
    raise();
    activateWindow();
    // For 100 milliseconds after it was hidden, the window is still QGuiApplication's focus window,
    // and its activation would pass unnoticed: keys would arrive, but no shortcut would work.
    if (!QApplication::activeWindow() && QGuiApplication::focusWindow() == windowHandle()) {
        qtversion::setActiveWindow(this);
    }
    m_commandEdit->setFocus(Qt::OtherFocusReason);
}

void MainWindow::activateCommand(const QString &command)
{
    showAndActivate();
    m_commandEdit->setText(command + u' ');
    performSearch();

    const IPlugin *plugin = m_pluginManager->pluginForCommand(command);
    if (plugin && plugin->hasView()) {
        openPluginView(command);
    }
}

bool MainWindow::event(QEvent *event)
{
    if (event->type() == QEvent::WindowDeactivate && m_settings->autoHideOnFocusLoss()) {
        // The focus may only be passing through another window on its way back to this one.
        QTimer::singleShot(focusLossDelay, this, [this] {
            if (!isActiveWindow() && m_settings->autoHideOnFocusLoss()) {
                hide();
            }
        });
    }
    return QWidget::event(event);
}

// The list hides for a moment whenever the window is fitted to it. Qt would then give its focus to
// the next widget, the close button, for good.
bool MainWindow::focusNextPrevChild(bool next)
{
    return (m_resultList->isVisible() || !m_resultList->hasFocus())
           && QWidget::focusNextPrevChild(next);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->ignore();
    hide();
}

void MainWindow::performSearch()
{
    const QString text = m_commandEdit->text();
    const std::optional<QString> arguments = takeCommand(text);
    if (arguments && opensAtOnce(*arguments)) {
        launchCurrent();
        return;
    }

    showResults(resultsFor(text, arguments.value_or(QString())));
    updateStatus();
    // A page stays only while the box still names the command that opened it.
    if (showsList() || !m_commandMode || m_currentCommand != m_viewCommand) {
        closePluginView();
    }
    updatePinnedStripVisibility();
}

// The arguments are unset where no blank ends the word.
std::optional<QString> MainWindow::takeCommand(const QString &text)
{
    const CommandText parts = splitCommandText(text);
    if (parts.arguments && !parts.word.isEmpty()) {
        m_commandMode = true;
        m_currentCommand = parts.word.trimmed();
        return parts.arguments;
    }

    const QString word = text.trimmed();
    m_commandMode = !word.isEmpty() && m_pluginManager->commands().contains(word);
    m_currentCommand = m_commandMode ? word : QString();
    return std::nullopt;
}

bool MainWindow::opensAtOnce(const QString &arguments) const
{
    return showsList() && arguments.trimmed().isEmpty()
           && m_pluginManager->autoEnterForCommand(m_currentCommand);
}

QVariantList MainWindow::resultsFor(const QString &text, const QString &arguments) const
{
    const QString trimmed = text.trimmed();
    QVariantList results;
    if (m_commandMode) {
        results = m_pluginManager->queryCommand(m_currentCommand, arguments);
    } else if (!trimmed.isEmpty() || m_settings->showAllAppsWhenSearchEmpty()) {
        results = m_launcher->search(text);
    }
    if (results.isEmpty() && !trimmed.isEmpty()) {
        results.append(webSearchRecord(trimmed));
    }
    return results;
}

QVariantMap MainWindow::webSearchRecord(const QString &text) const
{
    QVariantMap record = makeRecord(tr("Search \"%1\"").arg(text),
                                    tr("Search with %1").arg(m_settings->searchEngine()));
    setRecordAction(record, makeAction(actiontype::openUrl, webSearchUrl(text)));
    return record;
}

QString MainWindow::webSearchUrl(const QString &text) const
{
    return ::webSearchUrl(m_settings->searchEngine(), text);
}

void MainWindow::showResults(const QVariantList &results)
{
    m_results = results;
    m_resultList->clear();
    for (const QVariant &result : results) {
        m_resultList->addItem(new ResultItem(result.toMap()));
    }
    if (m_resultList->count() > 0) {
        m_resultList->setCurrentRow(0);
    }
}

void MainWindow::updateStatus()
{
    if (!m_commandMode) {
        m_statusLabel->hide();
        return;
    }
    const QString description = m_pluginManager->commandDescription(m_currentCommand);
    m_statusLabel->setText(description.isEmpty()
                               ? tr("%1 | Unknown command").arg(m_currentCommand)
                               : tr("%1 | %2").arg(m_currentCommand, description));
    m_statusLabel->show();
}

void MainWindow::launchCurrent()
{
    if (m_commandMode && openPluginView(m_currentCommand)) {
        return;
    }
    const QListWidgetItem *item = m_resultList->currentItem();
    if (!item) {
        return;
    }

    const QVariantMap record = item->data(Qt::UserRole).toMap();
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
    const int count = m_resultList->count();
    if (showsList() && count > 0) {
        m_resultList->setCurrentRow(std::clamp(m_resultList->currentRow() + delta, 0, count - 1));
    }
}

void MainWindow::clickRow(const QListWidgetItem *item)
{
    if (m_settings->appLaunchRequiresDoubleClick() || m_commandMode) {
        return;
    }
    if (!recordPath(item->data(Qt::UserRole).toMap()).isEmpty()) {
        launchCurrent();
    }
}

void MainWindow::doubleClickRow()
{
    if (m_settings->appLaunchRequiresDoubleClick() || m_commandMode) {
        launchCurrent();
    }
}

void MainWindow::openRowMenu(const QPoint &position)
{
    const QListWidgetItem *item = m_resultList->itemAt(position);
    if (!item) {
        return;
    }
    // A copy, since a search may replace the rows while the menu is open.
    const QVariantMap record = item->data(Qt::UserRole).toMap();
    const QString path = recordPath(record);
    if (path.isEmpty()) {
        return;
    }

    QMenu menu(this);
    const QAction *action =
        menu.addAction(m_launcher->isPinned(path) ? tr("Unpin from Start") : tr("Pin to Start"));
    if (menu.exec(m_resultList->viewport()->mapToGlobal(position)) != action) {
        return;
    }
    if (m_launcher->isPinned(path)) {
        m_launcher->unpinApp(path);
    } else {
        m_launcher->pinApp(path, recordTitle(record), recordIcon(record));
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
    if (m_stack->indexOf(page) < 0) {
        m_stack->addWidget(page);
    }
    m_stack->setCurrentWidget(page);
    m_stack->setVisible(true);
    m_stack->setMinimumHeight(0);
    m_stack->setMaximumHeight(QWIDGETSIZE_MAX);
    setMinimumSize(minimumWidth(), 0); // unlike setMinimumHeight(), leaves it to the layout
    if (height() != pageHeight) {
        resize(width(), pageHeight);
    }
    m_viewCommand = command;
    return true;
}

void MainWindow::closePluginView()
{
    // A page that goes with the focus in it would leave that to the next widget, the close button.
    if (!showsList() && m_stack->isAncestorOf(focusWidget())) {
        m_commandEdit->setFocus(Qt::OtherFocusReason);
    }
    m_stack->setCurrentWidget(m_resultList);
    m_stack->hide();
    m_stack->setFixedHeight(0);
    m_stack->updateGeometry();
    m_viewCommand.clear();
    scheduleHeightUpdate();
}

void MainWindow::rebuildPinnedStrip()
{
    clearPinnedStrip();
    const QVariantList pins = m_launcher->pinnedApps();
    if (!pins.isEmpty()) {
        auto *label = new QLabel(tr("Pinned"), m_pinnedBar);
        label->setObjectName(u"muted"_s);
        addToPinnedStrip(label);
        for (const QVariant &pin : pins) {
            addPinnedButton(pin.toMap());
        }
        m_pinnedLayout->addStretch();
    }
    m_pinnedBar->updateGeometry();
    updatePinnedStripVisibility();
    scheduleHeightUpdate();
}

void MainWindow::clearPinnedStrip()
{
    // A button that is deleted with the focus takes it along.
    if (m_pinnedBar->isAncestorOf(focusWidget())) {
        m_commandEdit->setFocus(Qt::OtherFocusReason);
    }
    while (QLayoutItem *item = m_pinnedLayout->takeAt(0)) {
        delete item->widget();
        delete item;
    }
}

void MainWindow::addPinnedButton(const QVariantMap &pin)
{
    const QString path = recordPath(pin);
    const QString icon = recordIcon(pin);
    // An ampersand in a name is a letter, not the mark of a shortcut.
    const QString text = recordTitle(pin).replace(u'&', "&&"_L1);

    auto *button = new QPushButton(text, m_pinnedBar);
    button->setObjectName(u"pinnedAppButton"_s);
    button->setIconSize(QSize(24, 24));
    if (!icon.isEmpty()) {
        button->setIcon(iconOfFile(icon));
    }
    button->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(button, &QPushButton::clicked, this, [this, path] {
        m_launcher->launch(path);
        hide();
    });
    connect(button, &QPushButton::customContextMenuRequested, this,
            [this, button, path](const QPoint &position) {
                openPinMenu(path, button->mapToGlobal(position));
            });
    addToPinnedStrip(button);
    setTabOrder(button, m_resultList); // which is older than the button, but below it
}

// Left to the layout, a widget would show only after the fit, which would not count it.
void MainWindow::addToPinnedStrip(QWidget *widget)
{
    m_pinnedLayout->addWidget(widget);
    widget->show();
}

void MainWindow::openPinMenu(const QString &path, const QPoint &globalPosition)
{
    QMenu menu(this);
    const QAction *unpin = menu.addAction(tr("Unpin from Start"));
    if (menu.exec(globalPosition) == unpin) {
        m_launcher->unpinApp(path);
    }
}

void MainWindow::updatePinnedStripVisibility()
{
    m_pinnedBar->setVisible(!m_launcher->pinnedApps().isEmpty() && m_commandEdit->text().isEmpty()
                            && !m_commandMode && m_viewCommand.isEmpty());
}

void MainWindow::offerUpdate(const QString &version, const QString &changelog, const QString &url)
{
    const QString text =
        tr("New version %1 is available.\n\n%2\n\nUpdate now?").arg(version, changelog);
    if (showPlainMessage(this, QMessageBox::Question, tr("Update available"), text,
                         QMessageBox::Yes | QMessageBox::No)
        == QMessageBox::Yes) {
        m_updater->downloadAndInstall(url);
    }
}

void MainWindow::showDownloadProgress(qint64 bytesReceived, qint64 bytesTotal)
{
    if (!m_progressDialog) {
        createProgressDialog();
    }
    if (bytesTotal > 0) {
        m_progressDialog->setValue(int(bytesReceived * 100 / bytesTotal));
    }
    m_progressDialog->show();
}

void MainWindow::createProgressDialog()
{
    m_progressDialog = new QProgressDialog(tr("Downloading update..."), QString(), 0, 100, this);
    m_progressDialog->setWindowModality(Qt::WindowModal);
    m_progressDialog->setCancelButton(nullptr);
    // A dialog that takes its own showing in hand runs the event loop from within setValue(). The
    // download could end in there, and the dialog would be shown again after its end.
    m_progressDialog->setMinimumDuration(std::numeric_limits<int>::max());
}

void MainWindow::closeProgressDialog()
{
    if (m_progressDialog) {
        m_progressDialog->close();
    }
}

bool MainWindow::showsList() const
{
    return m_stack->currentWidget() == m_resultList;
}

void MainWindow::scheduleHeightUpdate()
{
    if (!m_heightUpdatePending) {
        m_heightUpdatePending = true;
        QTimer::singleShot(0ms, this, &MainWindow::updateHeight);
    }
}

void MainWindow::updateHeight()
{
    m_heightUpdatePending = false;
    if (!showsList()) {
        return;
    }

    m_stack->hide();
    m_stack->setFixedHeight(0);
    m_stack->updateGeometry();
    if (QWidget *parent = m_stack->parentWidget()) {
        parent->updateGeometry();
    }
    layout()->activate();
    m_baseHeight = sizeHint().height();

    const int stackHeight = listHeightFor(m_expandedHeight);
    if (stackHeight > 0) {
        m_stack->setFixedHeight(stackHeight);
        m_stack->show();
    } else if (focusWidget() == m_resultList) {
        m_commandEdit->setFocus(Qt::OtherFocusReason);
    }
    layout()->activate();
    takeHeight(stackHeight + m_baseHeight, listHeightFor(0) + m_baseHeight);
}

// The layout's own minimum would not let the user drag the window smaller than its rows, as the
// list has a fixed height. It is lowered before the resize and raised after it, so that the window
// takes its height in one step. Many pins make the window wider.
void MainWindow::takeHeight(int height, int minimum)
{
    setMinimumWidth(std::max(minimumWindowWidth, minimumSizeHint().width()));
    setMinimumHeight(std::min(minimumHeight(), minimum));
    if (this->height() != height) {
        resize(width(), height);
    }
    setMinimumHeight(minimum);
}

int MainWindow::listHeightFor(int height) const
{
    return listHeight(m_resultList->count(), m_resultList->sizeHintForRow(0),
                      m_resultList->frameWidth(), height - m_baseHeight);
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int height = event->size().height();
    if (!event->spontaneous()) {
        rememberRequest(height);
    } else if (!takeRequest(height) && height != event->oldSize().height() && showsList()
               && m_stack->isVisible() && m_resultList->count() > 0) {
        m_expandedHeight = height;
        m_stack->setFixedHeight(listHeightFor(height));
    }
}

// When the program resizes the window several times in quick succession, the window system's answer
// to an earlier request comes as a spontaneous resize, which must not be taken for the user's.
void MainWindow::rememberRequest(int height)
{
    if (m_requestedHeights.size() == maximumRequests) {
        m_requestedHeights.removeFirst();
    }
    m_requestedHeights.append(height);
}

// Answers come in the order of the requests, though not to each of them. Where a pixel here is no
// whole number of the screen's, they are rounded there and back.
bool MainWindow::takeRequest(int height)
{
    const qreal ratio = devicePixelRatioF();
    const int tolerance = ratio == std::floor(ratio) ? 0 : maximumRoundingError;
    const auto request =
        std::find_if(m_requestedHeights.cbegin(), m_requestedHeights.cend(),
                     [&](int requested) { return std::abs(requested - height) <= tolerance; });
    const bool isAnswer = request != m_requestedHeights.cend();
    m_requestedHeights.erase(m_requestedHeights.cbegin(), isAnswer ? request + 1 : request);
    return isAnswer;
}
