// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMessageBox>

/// Shows a modal message box for a text from elsewhere, such as a server: as plain text, with a
/// scroll bar if it would fill the screen. Returns the chosen button; there is no default button.
QMessageBox::StandardButton showPlainMessage(QWidget *parent, QMessageBox::Icon icon,
                                             const QString &title, const QString &text,
                                             QMessageBox::StandardButtons buttons);

/// Asks in the same way, with Yes and No; returns whether the answer is Yes. An AnswerGuard keeps
/// what the user is typing from answering: a question about a text from elsewhere appears by
/// itself.
bool askPlainQuestion(QWidget *parent, const QString &title, const QString &text);
