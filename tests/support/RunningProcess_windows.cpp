// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/RunningProcess.h"

#include <windows.h>

bool isRunning(qint64 process)
{
    const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(process));
    if (!handle) {
        return false;
    }
    const bool isRunning = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
    CloseHandle(handle);
    return isRunning;
}
