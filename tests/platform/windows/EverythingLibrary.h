// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The exports of the tests' Everything64.dll beyond those of the real one. It searches for its
/// text in the given file names, without regard to case, and records the calls.
extern "C" {

/// Sets the full paths of the files, one per line, and resets everything else.
void EverythingTest_SetFiles(const wchar_t *paths);

/// Makes every query fail with this error, which may be 0.
void EverythingTest_Fail(unsigned error);

/// Makes the path of this result unreadable.
void EverythingTest_HideResult(unsigned index);

/// The calls since the last EverythingTest_SetFiles, one per line.
const wchar_t *EverythingTest_Calls();
}
