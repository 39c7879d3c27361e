// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMessageBox>

/// Shows a modal message box for a text from elsewhere, such as a server: as plain text, with a
/// scroll bar if it would fill the screen. Returns the chosen button; there is no default button.
QMessageBox::StandardButton showPlainMessage(QWidget *parent, QMessageBox::Icon icon,
                                             const QString &title, const QString &text,
                                             QMessageBox::StandardButtons buttons);
