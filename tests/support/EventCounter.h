// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QEvent>
#include <QObject>

/// Counts the events of a type that an object gets.
class EventCounter : public QObject
{
public:
    explicit EventCounter(QEvent::Type type)
        : m_type(type)
    {
    }

    EventCounter(QObject *watched, QEvent::Type type)
        : m_type(type)
    {
        watched->installEventFilter(this);
    }

    int count = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        count += event->type() == m_type ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

private:
    const QEvent::Type m_type;
};
