// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;
class QWidget;

/// Makes a screen reader say a text, for a change outside the control with the focus. Does nothing
/// while none runs. The widget may be any one in the window that has changed.
void announce(QWidget *widget, const QString &text);
