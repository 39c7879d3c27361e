// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The functions of Everything64.dll that the program uses, the client library of the Everything
/// file index. The library keeps one query for the whole process.
extern "C" {

void Everything_SetSearchW(const wchar_t *text);
void Everything_SetMax(unsigned count);
void Everything_SetRequestFlags(unsigned flags);

/// Runs the query and, if "wait" is not zero, blocks until it is done; zero on failure.
int Everything_QueryW(int wait);

unsigned Everything_GetLastError();
unsigned Everything_GetNumResults();

/// Copies a path, truncated to "size" characters with the final zero. Returns the number of
/// characters, or zero on failure.
unsigned Everything_GetResultFullPathNameW(unsigned index, wchar_t *buffer, unsigned size);

void Everything_Reset();
}
