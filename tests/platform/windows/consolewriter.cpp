// SPDX-License-Identifier: GPL-3.0-or-later
//
// A program with windows, which writes a line to its output and one to its errors.
#include "platform/Console.h"

using namespace Qt::StringLiterals;

int main()
{
    platform::writeToConsole(platform::ConsoleStream::Output, u"grün\n"_s);
    platform::writeToConsole(platform::ConsoleStream::Errors, u"error\n"_s);
    return 0;
}
