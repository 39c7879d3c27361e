// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QStackedWidget;
class QWidget;

/// Shows a page of a plugin in the stack, which gets the page if it is new. On a screen that is
/// smaller than fullWindowSize, the page gets a scroll area around it for good, since the window
/// may leave it too little room.
void showScrollable(QStackedWidget *stack, QWidget *page);
