// SPDX-License-Identifier: GPL-3.0-or-later
//
// Initialises the font library and sets the named environment variables meanwhile.
#include "platform/FontLibrary.h"

#include <cstdlib>

int main(int argc, char *argv[])
{
    platform::FontLibrary fonts;
    for (int index = 1; index < argc; ++index) {
        setenv(argv[index], "set", 1);
    }
    fonts.wait();
    return 0;
}
