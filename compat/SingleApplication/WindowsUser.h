// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <windows.h>

/// The identifier of the user of this process, as a string; empty if the system does not tell.
QString windowsUser();

/// Whether the process of this id belongs to the same user.
bool isProcessOfUser(DWORD id);
