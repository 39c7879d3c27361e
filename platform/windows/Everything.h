// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// What is used of Everything64.dll, the client library of the Everything file index. The library
/// keeps one query for the whole process.
extern "C" {

void Everything_SetSearchW(const wchar_t *text);
void Everything_SetMax(unsigned count);
void Everything_SetRequestFlags(unsigned flags);

/// Runs the query, and waits for its end if told to; zero for a failure.
int Everything_QueryW(int wait);

unsigned Everything_GetLastError();
unsigned Everything_GetNumResults();

/// Copies a path, cut to the size, which counts characters with the final zero; gives the number of
/// characters, or zero for a failure.
unsigned Everything_GetResultFullPathNameW(unsigned index, wchar_t *buffer, unsigned size);

void Everything_Reset();
}
