// SPDX-License-Identifier: GPL-3.0-or-later
//
// A program with windows, which writes a line to its output and, without an argument, one to its
// errors.
#include "platform/Console.h"

using namespace Qt::StringLiterals;

int main(int argc, char *[])
{
    platform::writeToConsole(platform::ConsoleStream::Output, u"grün\n"_s);
    if (argc == 1) {
        platform::writeToConsole(platform::ConsoleStream::Errors, u"error\n"_s);
    }
    return 0;
}
