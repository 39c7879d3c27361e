// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMessageBox>

/// QMessageBox::question() and its siblings for a text from elsewhere: it is shown as it stands,
/// never as markup, and one that would fill the screen scrolls above the buttons. Returns the
/// button that was chosen; none is the default.
QMessageBox::StandardButton showPlainMessage(QWidget *parent, QMessageBox::Icon icon,
                                             const QString &title, const QString &text,
                                             QMessageBox::StandardButtons buttons);
