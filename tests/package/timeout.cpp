// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: timeout /t SECONDS /nobreak
//
// Replaces the command of this name, which wine lacks.

#include <cstdlib>

#include <windows.h>

int main(int argc, char *argv[])
{
    if (argc < 3) {
        return 1;
    }
    Sleep(1000 * static_cast<DWORD>(std::atoi(argv[2])));
    return 0;
}
