// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/CommandText.h"

#include <QFrame>
#include <QSet>
#include <QString>

class InputMethodKeys;
class ManagementIcon;
class QLabel;
class QLineEdit;

/// The command box: a badge for a known command, the line edit for the text or the arguments, and
/// the management icon. Its text is one string with and without a badge. Backspace at the start of
/// the arguments turns the badge back into text and removes the arguments; with Ctrl it joins them
/// to that text, for a name that begins with a command.
class CommandLineEdit : public QFrame
{
    Q_OBJECT

public:
    explicit CommandLineEdit(QWidget *parent = nullptr);

    /// The whole text. With a badge it is the command, one blank and the arguments; the blank is
    /// there even when the arguments are empty.
    QString text() const;

    /// The same text, split into command and arguments.
    CommandText commandText() const;

    /// Replaces the whole text. A known command at its start becomes the badge.
    void setText(const QString &text);

    /// The line edit, for its keys and for setting the first placeholder.
    QLineEdit *lineEdit() const { return m_edit; }

    /// Whether an input method composes text in the edit. The keys then belong to it.
    bool isComposing() const;

    /// Sets the commands that become a badge. They are compared exactly; there are none at first.
    void setCommands(const QSet<QString> &commands) { m_commands = commands; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The text has changed, perhaps its command alone, or setText() has set the same text again.
    void textChanged();

    /// The management icon was clicked.
    void managementRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void forgetChanges();
    void buildContent();
    void connectContent();
    void detectCommand(const QString &text);
    void enterCommand(const QString &command, const QString &arguments);
    void leaveCommand(const QString &text);
    void replaceContent(const QString &text, const QString &placeholder);

    QLabel *m_badge = nullptr;
    QLineEdit *m_edit = nullptr;
    ManagementIcon *m_managementIcon = nullptr;
    InputMethodKeys *m_inputMethodKeys = nullptr;
    QSet<QString> m_commands;
    QString m_activeCommand;
    bool m_isUpdating = false;
    int m_changes = 0; ///< of the edit's text since forgetChanges()
};
