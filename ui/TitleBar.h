// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace QWK {
class WidgetWindowAgent;
}

/// Builds the title bar of the window, with a button that closes it, and gives it to the agent of
/// the window. The window is the parent of the bar.
QWidget *buildTitleBar(QWidget *window, QWK::WidgetWindowAgent *agent);
