// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVariantMap>
#include <QWidget>

class AppLauncher;
class ScrollRow;

/// The strip of buttons for the pinned programs. A button launches its program, and its menu
/// unpins it. The strip follows the pins of the launcher. It is as wide as its buttons, but no
/// wider than the screen; then the wheel and the focus scroll it. The owner shows and hides the
/// strip.
class PinnedStrip : public QWidget
{
    Q_OBJECT

public:
    /// The launcher is not owned and must outlive the strip. The strip is empty until rebuild().
    explicit PinnedStrip(AppLauncher *launcher, QWidget *parent = nullptr);

    bool isEmpty() const;

    /// Replaces the label and the buttons.
    void rebuild();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The strip is about to delete its buttons, one of which may have the focus.
    void aboutToChange();

    /// The strip was rebuilt, with its new buttons at the end of the tab order, or the width of the
    /// screen has changed.
    void changed();

    /// A button launched its program.
    void launched();

protected:
    bool event(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void clear();
    void addButton(const QVariantMap &pin);
    void addToLayout(QWidget *widget);
    void openMenu(const QString &path, const QPoint &globalPosition);
    void fitToScreen();
    int availableWidth() const;
    void scrollToButton(const QWidget &button);

    AppLauncher *m_launcher;
    ScrollRow *m_layout = nullptr;
};
