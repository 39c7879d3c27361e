// SPDX-License-Identifier: GPL-3.0-or-later
//
// A program with windows, which prints a line on each standard stream.
#include "platform/ParentConsole.h"

#include <cstdio>

int main()
{
    const platform::ParentConsole console;
    std::puts("gr\xc3\xbcn");
    std::fflush(stdout);
    std::fputs("error\n", stderr);
    return 0;
}
