// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QAbstractScrollArea;
class QComboBox;
class QString;

/// Sets the accessible name of a list, a tree or another scroll area, and of its vertical scroll
/// bar. A screen reader tells scroll bars apart by their names alone.
void setAccessibleNames(QAbstractScrollArea *area, const QString &name);

/// Sets the accessible name of a combo box, of its list and of the list's vertical scroll bar.
void setAccessibleNames(QComboBox *combo, const QString &name);
