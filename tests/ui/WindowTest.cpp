// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WindowTest.h"

#include "launcher/LauncherTest.h"
#include "support/FakePlatform.h"

#include "ui/CommandLineEdit.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <qpa/qwindowsysteminterface.h>

using namespace Qt::StringLiterals;

namespace windowtest {

FakePlugin::FakePlugin(const QString &command, View view, QObject *parent,
                       const QStringList &aliases)
    : IPlugin(parent)
    , m_command(command)
    , m_aliases(aliases)
    , m_view(view)
{
}

QVariantList FakePlugin::query(const QString &args)
{
    queries.append(args);
    return records;
}

bool FakePlugin::execute(const QVariantMap &action)
{
    actions.append(action);
    return false;
}

QWidget *FakePlugin::createView()
{
    if (hasView() && !page) {
        page = new QWidget;
    }
    return page;
}

int FakePlugin::closeReceivers() const
{
    return receivers(SIGNAL(viewCloseRequested())); // has no overload for member pointers
}

UrlRecorder::UrlRecorder()
{
    QDesktopServices::setUrlHandler(u"https"_s, this, "open");
}

UrlRecorder::~UrlRecorder()
{
    QDesktopServices::unsetUrlHandler(u"https"_s);
}

void UrlRecorder::open(const QUrl &url)
{
    addresses.append(url.toString(QUrl::FullyEncoded));
}

namespace {

FakePlugin &addPlugin(PluginManager &plugins, const QString &command, FakePlugin::View view,
                      const QStringList &aliases = {})
{
    auto *plugin = new FakePlugin(command, view, &plugins, aliases);
    plugins.registerPlugin(plugin);
    return *plugin;
}

} // namespace

Window::Window()
    : calc(addPlugin(plugins, u"calc"_s, FakePlugin::View::None))
    , todo(addPlugin(plugins, u"todo"_s, FakePlugin::View::Page))
    , set(addPlugin(plugins, u"set"_s, FakePlugin::View::Page, {u"user"_s}))
    , window(&launcher, &plugins, &settings, &updater)
{
    plugins.setSettings(&settings);
    titleBar = window.findChild<QWidget *>(u"windowTitleBar"_s);
    box = window.findChild<CommandLineEdit *>(u"commandInput"_s);
    edit = box->lineEdit();
    // The label of the strip has the same name.
    status = window.findChild<QWidget *>(u"windowContent"_s)
                 ->findChild<QLabel *>(u"muted"_s, Qt::FindDirectChildrenOnly);
    strip = window.findChild<QWidget *>(u"pinnedStrip"_s);
    stack = window.findChild<QStackedWidget *>(u"windowPages"_s);
    list = window.findChild<QListWidget *>(u"resultList"_s);
}

void Window::enter(const QString &text)
{
    box->setText(text);
    searchTimer().stop(); // on a busy machine it would search again before the end of the test
    search();
}

void Window::search()
{
    QMetaObject::invokeMethod(&window, "performSearch");
}

void Window::launchCurrent()
{
    QMetaObject::invokeMethod(&window, "launchCurrent");
}

void Window::moveSelection(int delta)
{
    QMetaObject::invokeMethod(&window, "moveSelection", Q_ARG(int, delta));
}

void Window::settle() const
{
    // Fitting the window changes the layout, which posts further events.
    for (int pass = 0; pass < 5; ++pass) {
        QCoreApplication::processEvents();
    }
}

bool Window::showActive()
{
    window.showAndActivate();
    const bool isActive = QTest::qWaitForWindowActive(&window);
    settle();
    return isActive;
}

void Window::drag(const QSize &size)
{
    QWindowSystemInterface::handleGeometryChange<QWindowSystemInterface::SynchronousDelivery>(
        window.windowHandle(), QRect(window.windowHandle()->position(), size));
    settle();
}

void Window::dragHeight(int height)
{
    drag(QSize(window.width(), height));
}

void Window::drift(const QPoint &position)
{
    QWindowSystemInterface::handleGeometryChange<QWindowSystemInterface::SynchronousDelivery>(
        window.windowHandle(), QRect(position, window.size()));
    settle();
}

QStringList Window::useMenu(QWidget *target, const QPoint &position, const QString &choice)
{
    QStringList texts;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu) {
            return;
        }
        poll.stop();
        menuPosition = menu->pos();
        QAction *chosen = nullptr;
        for (QAction *candidate : menu->actions()) {
            texts.append(candidate->text());
            chosen = candidate->text() == choice ? candidate : chosen;
        }
        if (chosen) {
            menu->setActiveAction(chosen);
            QTest::keyClick(menu, Qt::Key_Return);
        } else {
            menu->close();
        }
    });
    poll.start(0);

    QContextMenuEvent event(QContextMenuEvent::Mouse, position, target->mapToGlobal(position));
    QCoreApplication::sendEvent(target, &event);
    settle();
    return texts;
}

QStringList Window::rows() const
{
    QStringList texts;
    for (int index = 0; index < list->count(); ++index) {
        texts.append(list->item(index)->text());
    }
    return texts;
}

QString Window::currentTitle() const
{
    const QListWidgetItem *item = list->currentItem();
    return item ? item->text().section(u'\n', 0, 0) : QString();
}

QPushButton &Window::closeButton() const
{
    return *titleBar->findChild<QPushButton *>(u"windowCloseButton"_s);
}

QList<QPushButton *> Window::pinButtons() const
{
    return strip->findChildren<QPushButton *>(u"pinnedAppButton"_s);
}

QTimer &Window::searchTimer() const
{
    return *window.findChild<QTimer *>(u"searchTimer"_s);
}

int Window::fittedHeight() const
{
    return baseHeight() + (stack->isHidden() ? 0 : stack->height());
}

int Window::fullListHeight() const
{
    return list->count() * list->sizeHintForRow(0) + 2 * (list->frameWidth() + 5);
}

int Window::baseHeight() const
{
    return window.sizeHint().height() - (stack->isHidden() ? 0 : stack->height());
}

void reset()
{
    QLoggingCategory::setFilterRules(u"default.debug=false"_s);
    launchertest::reset();
    for (int index = 0; index < launchertest::builtinCount; ++index) {
        fakePlatform().builtinPrograms.insert(index, {programPath(index), {}, {}});
    }
}

QString programPath(int index)
{
    return u"/programs/%1.link"_s.arg(index);
}

QStringList launched()
{
    return fakePlatform().openedLinks;
}

QVariantMap testRecord(const QString &title, const QVariantMap &action, const QString &path)
{
    QVariantMap record{{u"title"_s, title}, {u"subtitle"_s, u"about "_s + title}};
    if (!action.isEmpty()) {
        record.insert(u"action"_s, action);
    }
    if (!path.isEmpty()) {
        record.insert(u"path"_s, path);
    }
    return record;
}

QVariantMap action(const QString &type, const QString &data, const QString &plugin)
{
    QVariantMap map{{u"type"_s, type}};
    if (!data.isEmpty()) {
        map.insert(u"data"_s, data);
    }
    if (!plugin.isEmpty()) {
        map.insert(u"plugin"_s, plugin);
    }
    return map;
}

QVariantList numberedRecords(int count)
{
    QVariantList records;
    for (int number = 1; number <= count; ++number) {
        records.append(testRecord(u"row %1"_s.arg(number)));
    }
    return records;
}

} // namespace windowtest
