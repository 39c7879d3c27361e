// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: opener file
//
// Opens a link, reports it and waits to be killed.

#include "platform/Link.h"

#include <QFile>

#include <cstdio>

#include <unistd.h>

int main(int argc, char *argv[])
{
    if (argc != 2 || !platform::openLink(QFile::decodeName(argv[1]))) {
        return 1;
    }
    std::puts("opened");
    std::fflush(stdout);
    pause();
    return 0;
}
