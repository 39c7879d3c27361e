// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "launcher/AppLauncher.h"
#include "settings/Settings.h"
#include "ui/MainWindow.h"
#include "update/Updater.h"

#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>
#include <QVariantMap>

class CommandLineEdit;
class QLabel;
class QLineEdit;
class QTimer;

/// What the tests of MainWindow have in common: the window over the real services, the faked
/// platform, and plugins that answer what a case tells them.
namespace windowtest {

/// A plugin that answers every query with the same rows and keeps what it was asked. It has a page
/// if it was made with one.
class FakePlugin : public IPlugin
{
    Q_OBJECT

public:
    enum class View {
        None,
        Page,
    };

    FakePlugin(const QString &word, View view, QObject *parent, const QStringList &aliases = {});

    QString command() const override { return m_word; }
    QStringList aliases() const override { return m_aliases; }
    QString description() const override { return m_word.toUpper(); }
    QVariantList query(const QString &args) override;
    bool execute(const QVariantMap &action) override;
    bool hasView() const override { return m_view == View::Page; }
    void setViewCommand(const QString &command) override { viewCommands.append(command); }
    QWidget *createView() override;

    /// The number of connections to viewCloseRequested().
    int closeReceivers() const;

    QVariantList rows;
    QStringList queries;
    QList<QVariantMap> actions;
    QStringList viewCommands;
    QPointer<QWidget> page;

private:
    QString m_word;
    QStringList m_aliases;
    View m_view;
};

/// Notes the web addresses that are opened while it lives.
class UrlRecorder : public QObject
{
    Q_OBJECT

public:
    UrlRecorder();
    ~UrlRecorder() override;
    Q_DISABLE_COPY_MOVE(UrlRecorder)

    QStringList addresses;

public Q_SLOTS:
    void open(const QUrl &url);
};

/// The window with its services: the built-in programs, which open as links, two of which are
/// pinned, and the plugins "calc" without a page, "todo", and "set" alias "user" with one.
class Window
{
public:
    Window();

    /// Puts a text into the box and searches at once.
    void enter(const QString &text);
    void search();
    void launchCurrent();
    void moveSelection(int delta);
    /// Has all that was put off to the next passes of the event loop done.
    void settle() const;
    bool showActive();
    /// Resizes the window as its user does.
    void drag(const QSize &size);
    void dragHeight(int height);

    /// Opens a menu by a right click, chooses its action of that text (or, with an empty text,
    /// dismisses it) and returns the texts of its actions; empty when there was no menu. menuPlace
    /// is where on the screen it opened.
    QStringList useMenu(QWidget *target, const QPoint &position, const QString &choice);

    QStringList rows() const;
    QString currentTitle() const;
    QPushButton &closeButton() const;
    QList<QPushButton *> pinButtons() const;
    QTimer &searchTimer() const;
    /// The height of the window as its rows have it: that of the list and of what is around it.
    int fittedHeight() const;
    /// The height of the list with all of its rows.
    int fullListHeight() const;
    /// The height of what is around the list.
    int baseHeight() const;
    bool isOnList() const { return stack->currentWidget() == list; }

    AppLauncher launcher;
    Settings settings;
    PluginManager plugins;
    FakePlugin &calc;
    FakePlugin &todo;
    FakePlugin &set;
    UrlRecorder urls;
    Updater updater;
    MainWindow window;

    QWidget *titleBar = nullptr;
    CommandLineEdit *box = nullptr;
    QLineEdit *edit = nullptr;
    QLabel *status = nullptr;
    QWidget *strip = nullptr;
    QStackedWidget *stack = nullptr;
    QListWidget *list = nullptr;
    QPoint menuPlace;
};

/// An empty home and fakes without a memory. Call it before each case.
void reset();

/// The path of a built-in program, by its place in the catalogue.
QString programPath(int index);

/// What was launched since reset().
QStringList launched();

QVariantMap row(const QString &title, const QVariantMap &action = {}, const QString &path = {});
QVariantMap action(const QString &type, const QString &data = {}, const QString &plugin = {});
QVariantList numberedRows(int count);

} // namespace windowtest
