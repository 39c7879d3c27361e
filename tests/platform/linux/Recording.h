// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJsonObject>
#include <QString>

/// Starts of the program "recorder" and its output.
namespace recording {

/// The path of the program.
QString program();

/// Sets the file for the next record in this process's environment, and removes the last one.
void prepare();

/// The record since prepare(); empty until the program has written it.
QJsonObject record();

} // namespace recording
