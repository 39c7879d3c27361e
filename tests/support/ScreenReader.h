// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QStringList>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

/// Acts as a screen reader during its lifetime and records the names of what gets the focus. There
/// can be one at a time.
class ScreenReader
{
public:
    ScreenReader()
    {
        s_names.clear();
        setRunning(true);
        m_previous = QAccessible::installUpdateHandler(record);
    }

    ~ScreenReader()
    {
        QAccessible::installUpdateHandler(m_previous);
        setRunning(false);
    }

    Q_DISABLE_COPY_MOVE(ScreenReader)

    QStringList names() const { return s_names; }

private:
    static void setRunning(bool isRunning)
    {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(isRunning);
    }

    static void record(QAccessibleEvent *event)
    {
        if (event->type() == QAccessible::Focus && event->accessibleInterface()) {
            s_names.append(event->accessibleInterface()->text(QAccessible::Name));
        }
    }

    inline static QStringList s_names;

    QAccessible::UpdateHandler m_previous;
};
