// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QWidget;

/// Tells when the palette of a widget has changed, for colours that the widget has set by hand.
class PaletteWatcher : public QObject
{
    Q_OBJECT

public:
    /// The widget becomes the parent.
    explicit PaletteWatcher(QWidget *widget);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void paletteChanged();
};
