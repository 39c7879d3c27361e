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

/// Shared by the tests of MainWindow: the window with real services, the faked platform, and
/// plugins with scripted answers.
namespace windowtest {

/// Answers every query with the same records and records its calls. Has a page only with
/// View::Page.
class FakePlugin : public IPlugin
{
    Q_OBJECT

public:
    enum class View {
        None,
        Page,
    };

    FakePlugin(const QString &command, View view, QObject *parent, const QStringList &aliases = {});

    QString command() const override { return m_command; }
    QStringList aliases() const override { return m_aliases; }
    QString description() const override { return m_command.toUpper(); }
    QVariantList query(const QString &args) override;
    bool execute(const QVariantMap &action) override;
    bool hasView() const override { return m_view == View::Page; }
    void setViewCommand(const QString &command) override { viewCommands.append(command); }
    QWidget *createView() override;

    /// The number of connections to viewCloseRequested().
    int closeReceivers() const;

    QVariantList records;
    QStringList queries;
    QList<QVariantMap> actions;
    QStringList viewCommands;
    QPointer<QWidget> page;

private:
    QString m_command;
    QStringList m_aliases;
    View m_view;
};

/// Records the web addresses that are opened during its lifetime.
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

/// The window with its services: the built-in programs, which are opened as links and of which two
/// are pinned; the plugins "calc" without a page, "todo" with one, and "set", alias "user", with
/// one.
class Window
{
public:
    Window();

    /// Sets the text of the box and searches at once, but not once more after the delay.
    void enter(const QString &text);
    void search();
    void launchCurrent();
    void moveSelection(int delta);
    /// Processes the events of the next passes of the event loop.
    void settle() const;
    bool showActive();
    /// Resizes the window as a user does.
    void drag(const QSize &size);
    void dragHeight(int height);
    /// Moves the window as the window system does.
    void drift(const QPoint &position);

    /// Opens a menu with a right click and triggers the action with this text, or dismisses the
    /// menu if the text is empty. Returns the texts of the actions; empty if no menu opened. Sets
    /// menuPosition, in screen coordinates.
    QStringList useMenu(QWidget *target, const QPoint &position, const QString &choice);

    QStringList rows() const;
    QString currentTitle() const;
    QPushButton &closeButton() const;
    QList<QPushButton *> pinButtons() const;
    QTimer &searchTimer() const;
    /// The height of the list plus baseHeight().
    int fittedHeight() const;
    /// The height of the list with all of its rows.
    int fullListHeight() const;
    /// The height of the window without the list.
    int baseHeight() const;
    bool isListCurrent() const { return stack->currentWidget() == list; }

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
    QPoint menuPosition;
};

/// Empties the home and resets the fakes. Call this before each case.
void reset();

/// The path of a built-in program, by its index in the catalogue.
QString programPath(int index);

/// The paths that were launched since reset().
QStringList launched();

QVariantMap testRecord(const QString &title, const QVariantMap &action = {},
                       const QString &path = {});
QVariantMap action(const QString &type, const QString &data = {}, const QString &plugin = {});
QVariantList numberedRecords(int count);

} // namespace windowtest
