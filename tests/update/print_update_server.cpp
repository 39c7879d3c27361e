// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/UpdateServer.h"

#include <cstdio>

int main()
{
    return std::puts(qPrintable(updateServer())) < 0 ? 1 : 0;
}
