// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/CommandText.h"

#include <QFrame>
#include <QSet>
#include <QString>

class ManagementIcon;
class QLabel;
class QLineEdit;

/// The command box: one field to the eye, which shows a known command as a badge in front of
/// the edit that holds its arguments. To its user the text is one string in both states.
class CommandLineEdit : public QFrame
{
    Q_OBJECT

public:
    explicit CommandLineEdit(QWidget *parent = nullptr);

    /// The whole text. With a badge it is the command, one blank, and the arguments as they stand,
    /// so that the blank is there even when the arguments are empty.
    QString text() const;

    /// The same text, taken apart.
    CommandText commandText() const;

    /// Replaces the whole text; a known command at its beginning becomes the badge.
    void setText(const QString &text);

    /// The edit itself, for its signals and its first placeholder.
    QLineEdit *lineEdit() const { return m_edit; }

    /// The commands that become a badge, compared exactly; none until this is called.
    void setCommands(const QSet<QString> &commands) { m_commands = commands; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The icon was clicked.
    void managementRequested();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void buildContent();
    void connectContent();
    void detectCommand(const QString &text);
    void enterCommand(const QString &command, const QString &arguments);
    void leaveCommand(const QString &text);
    void replaceContent(const QString &text, const QString &placeholder);

    QLabel *m_badge = nullptr;
    QLineEdit *m_edit = nullptr;
    ManagementIcon *m_managementIcon = nullptr;
    QSet<QString> m_commands;
    QString m_activeCommand;
    bool m_updating = false;
};
