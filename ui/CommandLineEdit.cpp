// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/CommandLineEdit.h"

#include "ui/ManagementIcon.h"
#include "widgets/Announcement.h"
#include "widgets/InputMethodKeys.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace {

constexpr int maximumChanges = 200; // a longer undo history is dropped when the window hides

} // namespace

CommandLineEdit::CommandLineEdit(QWidget *parent)
    : QFrame(parent)
{
    buildContent();
    connectContent();
}

void CommandLineEdit::buildContent()
{
    setObjectName(u"commandInput"_s);
    setToolTip(tr("To find a name that begins with a command, type a blank first.\n"
                  "Ctrl+Backspace directly after the badge joins it to the letters that follow."));

    m_badge = new QLabel(this);
    m_badge->setObjectName(u"commandBadge"_s);
    m_badge->hide();

    m_edit = new QLineEdit(this);
    m_edit->setObjectName(u"commandArgumentEdit"_s);
    m_edit->setAccessibleName(tr("Search apps or type cmd space args..."));
    setFocusProxy(m_edit);

    m_managementIcon = new ManagementIcon(this);
    m_managementIcon->setToolTip(tr("Open user management"));
    m_managementIcon->setAccessibleName(m_managementIcon->toolTip());

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 4, 5, 4);
    layout->setSpacing(6);
    layout->addWidget(m_badge);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_managementIcon);
}

void CommandLineEdit::connectContent()
{
    m_edit->installEventFilter(this);
    m_inputMethodKeys = new InputMethodKeys(m_edit); // after this object: called before it
    connect(m_managementIcon, &ManagementIcon::clicked, this,
            &CommandLineEdit::managementRequested);
    connect(m_edit, &QLineEdit::textChanged, this, &CommandLineEdit::detectCommand);
    connect(m_edit, &QLineEdit::textChanged, this, [this] { ++m_changes; });
    connect(m_edit, &QLineEdit::textChanged, this, &CommandLineEdit::textChanged);
}

QString CommandLineEdit::text() const
{
    return m_activeCommand.isEmpty() ? m_edit->text() : commandText().joined();
}

CommandText CommandLineEdit::commandText() const
{
    return m_activeCommand.isEmpty() ? splitCommandText(m_edit->text())
                                     : CommandText{m_activeCommand, m_edit->text()};
}

void CommandLineEdit::setText(const QString &text)
{
    const CommandText parts = splitCommandText(text);
    if (m_commands.contains(parts.command)) {
        enterCommand(parts.command, parts.arguments.value_or(QString()));
    } else {
        leaveCommand(text);
    }
}

bool CommandLineEdit::isComposing() const
{
    return m_inputMethodKeys->isComposing();
}

// Frames the whole box while its edit has the focus. A style sheet cannot: Qt parses :focus-within
// but never sets it.
void CommandLineEdit::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    if (m_edit->hasFocus()) {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(m_edit->palette().color(QPalette::Highlight), 2));
        painter.drawRoundedRect(rect().adjusted(1, 1, -1, -1), 7, 7);
    }
}

void CommandLineEdit::hideEvent(QHideEvent *event)
{
    QFrame::hideEvent(event);
    if (m_changes > maximumChanges && !isComposing()) {
        forgetChanges();
    }
}

// A line edit keeps all changes that the user could undo, until somebody sets its text.
void CommandLineEdit::forgetChanges()
{
    const QSignalBlocker blocker(m_edit);
    const int cursor = m_edit->cursorPosition();
    const int begin = m_edit->selectionStart();
    const int end = m_edit->selectionEnd();
    m_edit->setText(m_edit->text());
    m_edit->setCursorPosition(cursor);
    if (begin >= 0) {
        m_edit->setSelection(cursor == begin ? end : begin,
                             cursor == begin ? begin - end : end - begin);
    }
    m_changes = 0;
}

bool CommandLineEdit::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_edit
        && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
        update();
    }
    if (watched == m_edit && event->type() == QEvent::KeyPress && !m_activeCommand.isEmpty()
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Backspace
        && m_edit->cursorPosition() == 0 && !m_edit->hasSelectedText()) {
        const bool joins = static_cast<QKeyEvent *>(event)->modifiers() & Qt::ControlModifier;
        const QString text = joins ? m_activeCommand + m_edit->text() : m_activeCommand;
        leaveCommand(text);
        return true;
    }
    return QFrame::eventFilter(watched, event);
}

void CommandLineEdit::detectCommand(const QString &text)
{
    if (m_isUpdating || !m_activeCommand.isEmpty()) {
        return;
    }
    const CommandText parts = splitCommandText(text);
    if (m_commands.contains(parts.command)) {
        enterCommand(parts.command, parts.arguments.value_or(QString()));
    }
}

void CommandLineEdit::enterCommand(const QString &command, const QString &arguments)
{
    m_activeCommand = command;
    m_badge->setText(command);
    m_badge->show();
    replaceContent(arguments, tr("Type arguments..."));
    m_edit->setAccessibleDescription(tr("Command %1").arg(command));
    announce(this, m_edit->accessibleDescription());
}

void CommandLineEdit::leaveCommand(const QString &text)
{
    m_activeCommand.clear();
    m_badge->hide();
    replaceContent(text, tr("Search apps or type cmd space args..."));
    m_edit->setAccessibleDescription(QString());
}

void CommandLineEdit::replaceContent(const QString &text, const QString &placeholder)
{
    // Other slots need textChanged, so set a flag for detectCommand() instead of blocking signals.
    const QScopedValueRollback guard(m_isUpdating, true);
    const bool isSilent = m_edit->text() == text;
    m_edit->setText(text); // moves the cursor to the end
    m_edit->setPlaceholderText(placeholder);
    m_edit->setAccessibleName(placeholder);
    if (isSilent) {
        Q_EMIT textChanged();
    }
}
