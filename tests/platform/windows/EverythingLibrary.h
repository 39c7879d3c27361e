// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// What the tests' own Everything64.dll exports besides the operations of the real one. It searches
/// for its text in the names of the files that it was told, whatever their case, and records calls.
extern "C" {

/// Gives the full paths of the files, one a line, and forgets all that was told before.
void EverythingTest_SetFiles(const wchar_t *paths);

/// Has every query fail with this error, which may be 0.
void EverythingTest_Fail(unsigned error);

/// The result whose path cannot be read.
void EverythingTest_HideResult(unsigned index);

/// The calls since the last EverythingTest_SetFiles, one a line.
const wchar_t *EverythingTest_Calls();
}
