// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

class QWidget;

/// The interface of a plugin, which answers a command. Plugins are compiled in and get their
/// services in their constructor. PluginManager calls them on the GUI thread only. Use
/// core/ResultRecord.h to make and read records and actions.
class IPlugin : public QObject
{
    Q_OBJECT

public:
    explicit IPlugin(QObject *parent = nullptr);
    ~IPlugin() override;

    /// The command: lower case, without blanks.
    virtual QString command() const = 0;

    /// Further commands for this plugin.
    virtual QStringList aliases() const;

    /// One translated line for the status line of the window.
    virtual QString description() const = 0;

    /// Returns the records for the untrimmed text after the command; called at every search. For
    /// bad input it returns a record whose action has the type "none".
    virtual QVariantList query(const QString &args) = 0;

    /// The texts by which query() finds programs and files; the window emphasizes them in the rows.
    /// Empty, as by default, for a plugin that makes its records in another way.
    virtual QStringList searchTexts(const QString &args) const;

    /// Whether the arguments are the path of a folder, whose content query() lists. In the rows of
    /// such a plugin, Tab enters a folder and Alt+Up goes to its parent. False by default.
    virtual bool listsFolders() const;

    /// Carries out an action that names this plugin. Returns false on failure.
    virtual bool execute(const QVariantMap &action) = 0;

    /// Whether createView() returns a page.
    virtual bool hasView() const;

    /// Called before createView() with the command, in lower case, that opens the page.
    virtual void setViewCommand(const QString &command);

    /// Returns the page, or null if the plugin has none; the same page at each call as long as it
    /// exists. The caller becomes its owner by setting its parent.
    virtual QWidget *createView();

Q_SIGNALS:
    /// The user wants to leave the page.
    void viewCloseRequested();
};
