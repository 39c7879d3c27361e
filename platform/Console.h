// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

enum class ConsoleStream {
    Output,
    Errors,
};

/// Writes the text, whose last line ends with a newline, where the starter of this process expects
/// it: into the file or pipe that it has given, otherwise on its console. Without any of these, the
/// text is lost.
void writeToConsole(ConsoleStream stream, const QString &text);

} // namespace platform
