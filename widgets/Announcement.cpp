// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/Announcement.h"

#include "platform/QtVersion.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QTimer>
#include <QWidget>

#include <chrono>

using namespace std::chrono_literals;

namespace {

// Screen readers fetch the text after they have learned of the notification.
constexpr auto lifetime = 10s;

/// A notification, which screen readers say as soon as it shows. No list of children contains it.
class Notification : public QAccessibleObject
{
public:
    /// The owner lives as long as the notification.
    Notification(QObject *owner, QWidget *window, const QString &text)
        : QAccessibleObject(owner)
        , m_window(window)
        , m_text(text)
    {
    }

    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_window);
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::Notification; }
    QAccessible::State state() const override { return {}; }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? m_text : QString();
    }

private:
    QWidget *m_window;
    QString m_text;
};

} // namespace

void announce(QWidget *widget, const QString &text)
{
    if (!QAccessible::isActive() || qtversion::announce(widget, text)) {
        return;
    }
    auto *owner = new QObject(widget->window());
    auto *notification = new Notification(owner, widget->window(), text);
    QAccessible::registerAccessibleInterface(notification); // deletes it with its owner
    QAccessibleEvent event(notification, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&event);
    QTimer::singleShot(lifetime, owner, &QObject::deleteLater);
}
