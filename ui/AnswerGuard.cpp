// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/AnswerGuard.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>

#include <memory>

namespace {

// Qt moves the focus for these reasons, not the user.
bool isByItself(const QEvent &event)
{
    const Qt::FocusReason reason = static_cast<const QFocusEvent &>(event).reason();
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

bool pressesButtons(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space
           || key == Qt::Key_Select;
}

} // namespace

AnswerGuard::AnswerGuard(QMessageBox *box, QWidget *window, std::chrono::milliseconds duration)
    : QObject(box)
    , m_box(box)
    , m_window(window && window->isActiveWindow() ? window : nullptr)
{
    m_timer.setInterval(duration);
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer); // a coarse timer may be early
    m_timer.callOnTimeout(this, [this] { m_isOver = true; });

    box->installEventFilter(this);
    const QList<QWidget *> widgets = box->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        widget->installEventFilter(this);
    }
    // Qt would focus the first button, which would look as if Enter pressed it.
    box->setFocus();
}

bool AnswerGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && watched == m_box) {
        m_timer.start();
        return false;
    }
    if (!m_isOver) {
        return filterAtFirst(event);
    }
    const bool isButton = qobject_cast<QAbstractButton *>(watched);
    if (event->type() == QEvent::FocusIn && isButton && !isByItself(*event)) {
        m_isFocusMoved = true;
    }
    // Other widgets, such as the long text, keep their keys: no key of theirs answers.
    return event->type() == QEvent::KeyPress && (isButton || watched == m_box)
           && filterKeyPress(*static_cast<QKeyEvent *>(event));
}

bool AnswerGuard::filterAtFirst(QEvent *event) const
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // The key then arrives as a key press, and not as the shortcut of a button.
        event->accept();
        return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        passOn(*static_cast<QKeyEvent *>(event));
        return true;
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return true;
    case QEvent::Close:
        // Closing counts as an answer. A close event from the window system comes from a click or a
        // key.
        if (event->spontaneous()) {
            event->ignore();
        }
        return event->spontaneous();
    default:
        return false;
    }
}

bool AnswerGuard::filterKeyPress(const QKeyEvent &event) const
{
    if (pressesButtons(event.key())) {
        return !m_isFocusMoved || !qobject_cast<QAbstractButton *>(m_box->focusWidget());
    }
    // QMessageBox takes a letter without Alt for the shortcut of its button.
    const bool isCharacter = event.key() < Qt::Key_Escape;
    return isCharacter
           && !(event.modifiers() & (Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier));
}

void AnswerGuard::passOn(const QKeyEvent &event) const
{
    if (QWidget *widget = m_window ? m_window->focusWidget() : nullptr) {
        const std::unique_ptr<QKeyEvent> copy(event.clone());
        QCoreApplication::sendEvent(widget, copy.get());
    }
}
