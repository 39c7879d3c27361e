// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Console.h"

#include <cstdio>

namespace platform {

void writeToConsole(ConsoleStream stream, const QString &text)
{
    std::FILE *file = stream == ConsoleStream::Output ? stdout : stderr;
    std::fputs(text.toLocal8Bit().constData(), file);
    std::fflush(file);
}

} // namespace platform
