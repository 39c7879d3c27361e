// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJsonObject>
#include <QString>

/// Starts of the program "recorder" and what it wrote down.
namespace recording {

/// Where the program is.
QString program();

/// Names the file for the next record, in this process's environment, and removes the last one.
void prepare();

/// What the program has recorded since then; empty as long as it has not.
QJsonObject record();

} // namespace recording
