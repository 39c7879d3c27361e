// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/InputMethodKeys.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace {

bool hasText(const QKeyEvent &key)
{
    return !key.text().isEmpty() && key.text().at(0).isPrint();
}

} // namespace

InputMethodKeys::InputMethodKeys(QLineEdit *edit)
    : QObject(edit)
{
    edit->installEventFilter(this);
}

bool InputMethodKeys::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::InputMethod:
        m_isComposing = !static_cast<QInputMethodEvent *>(event)->preeditString().isEmpty();
        break;
    case QEvent::FocusOut:
        m_isComposing = false; // an input method that has crashed tells nothing
        break;
    case QEvent::ShortcutOverride:
        if (m_isComposing) {
            event->accept(); // otherwise a shortcut of the window would take the key
            return true;
        }
        break;
    case QEvent::KeyPress:
        if (m_isComposing && !hasText(*static_cast<QKeyEvent *>(event))) {
            return true;
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
