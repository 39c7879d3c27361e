// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/TypingPause.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

TypingPause::TypingPause(QObject *parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.callOnTimeout(this, &TypingPause::callAtPause);
    QCoreApplication::instance()->installEventFilter(this);
}

void TypingPause::call(const std::function<void()> &function)
{
    m_function = function;
    callAtPause();
}

bool TypingPause::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::InputMethod) {
        m_lastKey.start();
    }
    return QObject::eventFilter(watched, event);
}

void TypingPause::callAtPause()
{
    const std::chrono::milliseconds passed(m_lastKey.isValid() ? m_lastKey.elapsed()
                                                               : duration.count());
    if (passed < duration) {
        m_timer.start(duration - passed);
    } else if (m_function) {
        std::exchange(m_function, nullptr)();
    }
}
