// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVariantMap>
#include <QWidget>

class AppLauncher;
class QHBoxLayout;

/// The row of pinned applications: a button launches its application, and the button's menu unpins
/// it. The buttons follow the launcher's pins. When to show the strip is for its owner to say.
class PinnedStrip : public QWidget
{
    Q_OBJECT

public:
    /// The launcher is not owned and must outlive the strip, which is empty until rebuild().
    explicit PinnedStrip(AppLauncher *launcher, QWidget *parent = nullptr);

    bool isEmpty() const;

    /// Makes the label and the buttons anew.
    void rebuild();

Q_SIGNALS:
    /// The strip is about to be rebuilt: a button with the focus would take it along.
    void aboutToChange();

    /// The strip was rebuilt: its buttons are new ones, at the end of the tab order.
    void changed();

    /// A button was clicked, and its application launched.
    void launched();

private:
    void clear();
    void addButton(const QVariantMap &pin);
    void addToLayout(QWidget *widget);
    void openMenu(const QString &path, const QPoint &globalPosition);

    AppLauncher *m_launcher;
    QHBoxLayout *m_layout = nullptr;
};
