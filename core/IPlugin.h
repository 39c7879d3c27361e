// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

class QWidget;

/// What a command word must answer. A plugin is compiled in, is handed its services by pointer in
/// its constructor, belongs to the PluginManager and is called on the GUI thread alone. Result
/// records and action maps are made and read with core/ResultRecord.h.
class IPlugin : public QObject
{
    Q_OBJECT

public:
    explicit IPlugin(QObject *parent = nullptr);
    ~IPlugin() override;

    /// The primary command word: lower case, no blanks.
    virtual QString command() const = 0;

    /// Further command words that reach this plugin.
    virtual QStringList aliases() const;

    /// One translated line for the status line of the window.
    virtual QString description() const = 0;

    /// The result records for the untrimmed text behind the command word; called on every search.
    /// A bad input is answered with a record whose action has the type "none".
    virtual QVariantList query(const QString &args) = 0;

    /// Carries out an action map that names this plugin; false when it could not.
    virtual bool execute(const QVariantMap &action) = 0;

    /// Whether createView() yields a page.
    virtual bool hasView() const;

    /// Tells, before createView(), through which word (in lower case) the page is being opened.
    virtual void setViewCommand(const QString &command);

    /// The plugin's page, the same one at each call while it lives, or null for a plugin without.
    /// Whoever shows it becomes its parent.
    virtual QWidget *createView();

Q_SIGNALS:
    /// The page asks to be closed.
    void viewCloseRequested();
};
